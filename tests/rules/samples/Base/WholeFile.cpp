// The one place: it may write, and no more.
#include <QSaveFile>
#include "Models/Layer.h" // wrong

int right()
{
    return open("a", O_WRONLY | O_CREAT, 0600);
}
