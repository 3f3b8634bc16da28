// The instruments of the virtual card: how tests and shows look into it and let it fail.
#pragma once

#include <cstdint>

// C types only, for they cross the border of the library.
extern "C" {

struct TessaraVirtualCardDevice
{
    char name[64];
    char modeName[32]; // of the last output, empty before the first
    bool supportsExternalKeying;
    bool supportsInternalKeying;
    bool isPlugged;
    bool isOutputEnabled;
    bool isKeyerEnabled;
    uint8_t keyerLevel;
};

struct TessaraVirtualCardLimits
{
    const char *const *modes; // names, null for no limit
    int32_t modeCount;
    const uint32_t *formats; // pixel formats, null for no limit
    int32_t formatCount;
    bool allowsKeying;
    int32_t rowBytes;    // 0 for what the format needs
    bool acceptsAnySize; // frames of another size than the mode's
};

// Counts and times since the output was last enabled.
struct TessaraVirtualCardFrames
{
    int64_t sent;
    int64_t waited;
    uint32_t pixelFormat; // these four of the newest frame, 0 before the first
    int32_t width;
    int32_t height;
    int32_t rowBytes;
    double intervalP50; // s, between display calls
    double intervalP99; // s
    double intervalMax; // s
};

struct TessaraVirtualCardFrame
{
    int64_t number; // counts from 1
    uint32_t pixelFormat;
    int32_t width;
    int32_t height;
    int32_t rowBytes;
};

// Whose time the display calls keep.
struct TessaraVirtualCardTime
{
    void *context;                 // handed to both
    int64_t (*now)(void *context); // ns, never going back
    void (*waitUntil)(void *context, int64_t time);
};

// A device is its index, plugged or not; -1 stands for what belongs to no device. What returns
// bool answers false for an argument that names nothing, and then changes nothing.
struct TessaraVirtualCardInstruments
{
    uint32_t version; // 3; grows when a member below changes its meaning or goes
    uint32_t size;    // of this record: newer ones only get longer

    void (*setFreeRunning)(bool isFreeRunning);
    bool (*setChannel)(const char *name);
    void (*setDriverVersion)(uint32_t version); // 0 for the card's own
    int32_t (*deviceCount)();
    bool (*device)(int32_t device, TessaraVirtualCardDevice *description);
    bool (*fail)(int32_t device, const char *call, int32_t times);
    bool (*limit)(int32_t device, const TessaraVirtualCardLimits *limits);
    bool (*remove)(int32_t device);
    bool (*restore)(int32_t device);
    bool (*frames)(int32_t device, TessaraVirtualCardFrames *frames);
    // The size of the newest frame's bytes, which are copied if they fit; 0 before the first.
    uint64_t (*newestFrame)(int32_t device, TessaraVirtualCardFrame *frame, void *bytes,
                            uint64_t capacity);
    int64_t (*liveObjects)(); // created and not yet released by the last holder
    // How often a driver operation was called since the last reset.
    int64_t (*callCount)(int32_t device, const char *call);
    // Takes back failures, limits, removals, the driver version and the time.
    void (*reset)();
    // Null for the machine's own. To be called while no output is enabled.
    void (*setTime)(const TessaraVirtualCardTime *time);
};

const TessaraVirtualCardInstruments *TessaraVirtualCardInstruments_0001();

} // extern "C"
