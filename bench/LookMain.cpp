// Asks the virtual card of a program for its frames, as the monitor does, until its input ends: the
// card copies each of them then.
#include "Base/ApplicationSupport.h"
#include "Core/VirtualCardChannel.h"
#include "DeckLink/SharedFrameReader.h"

#include <cstdio>
#include <cstdlib>

#include <poll.h>
#include <unistd.h>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s DATA_FOLDER\n", argv[0]);
        return EXIT_FAILURE;
    }
    constexpr int lookInterval = 40; // ms
    const QString channel =
        tessara::virtualCardChannel(tessara::ApplicationSupport(QString::fromLocal8Bit(argv[1])));
    tessara::SharedFrameReader readers[] = {tessara::SharedFrameReader(0, channel),
                                            tessara::SharedFrameReader(1, channel)};
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (poll(&input, 1, lookInterval) == 0) {
        for (tessara::SharedFrameReader &reader : readers)
            reader.status();
    }
    for (tessara::SharedFrameReader &reader : readers) {
        if (const auto status = reader.status())
            std::printf("looked until frame %llu\n", status->number);
    }
    return EXIT_SUCCESS;
}
