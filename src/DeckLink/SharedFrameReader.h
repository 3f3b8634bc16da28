// The frames that another process sends to the virtual card.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <memory>
#include <optional>

namespace tessara {

/// One output of the virtual card as its process describes it.
struct SharedFrameStatus
{
    quint64 number = 0; // of the newest frame, counts from 1 after each start; 0 before the first
    bool isOutputEnabled = false;
    bool isKeying = false;
    QString modeName;
    int width = 0;           // px, of the mode
    int height = 0;          // px, of the mode
    double rate = 0;         // frames a second
    quint32 pixelFormat = 0; // of the newest frame
    int rowBytes = 0;        // of the newest frame

    bool operator==(const SharedFrameStatus &) const = default;
};

struct SharedFrame
{
    SharedFrameStatus status;
    QImage fill; // as a monitor behind the fill connector shows it
    QImage key;  // as a monitor behind the key connector shows it, null without keying
};

/// Follows one device through every restart of the program that feeds it.
class SharedFrameReader
{
public:
    /// The channel is the one that the feeding program set, by default the user's own.
    explicit SharedFrameReader(int device, const QString &channel = {});
    ~SharedFrameReader();
    SharedFrameReader(SharedFrameReader &&) noexcept;
    SharedFrameReader &operator=(SharedFrameReader &&) noexcept;

    /// Nothing while no program has opened this output. Cheap: no pixel is touched.
    std::optional<SharedFrameStatus> status();
    /// The newest frame, nothing before the first.
    std::optional<SharedFrame> newestFrame();

private:
    class Mapping;
    const Mapping *mapping();

    QString m_name;
    std::unique_ptr<Mapping> m_mapping;
    QByteArray m_bytes; // kept between frames, for its size rarely changes
};

} // namespace tessara
