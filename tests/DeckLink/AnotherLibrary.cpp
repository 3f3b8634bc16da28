extern "C" __attribute__((visibility("default"))) void *CreateDeckLinkIteratorInstance_0002()
{
    return nullptr;
}
