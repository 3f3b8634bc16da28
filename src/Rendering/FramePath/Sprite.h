// The kept raster of one drawing operation.
#pragma once

#include "Rendering/FramePath/OutlineChange.h"
#include "Rendering/Primitive.h"

#include <QRect>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tessara {

/// Cells of one row that follow each other and have something in them.
struct SpriteRun
{
    const quint8 *data; // a byte a pixel of a mask, four of a picture
    quint16 x;          // px from the sprite's left
    quint16 pixels;     // whole cells
    bool isFull;        // covered wholly, or opaque: nothing shows through at full opacity
    bool isRim = false; // pixels of a picture that are covered in part: they are whole, and behind
                        // them lies a byte a pixel that tells how much of each is covered

    const quint8 *coverage() const { return data + qsizetype(pixels) * 4; }
};

/// A primitive in pixels: the coverage of an outline, or a picture, scaled and masked. Only what
/// isn't empty is kept, in cells of eight pixels, so that inner loops have neither tails nor tests.
/// Where a picture covers pixels in part, it is kept beside its coverage, since the two have to be
/// multiplied by an opacity in the painter's order.
/// Never changed once made; any thread may read it.
class Sprite
{
public:
    enum class Kind { mask, picture };

    /// What `primitive` covers of `area`, in pixels of the frame. For any thread. The sprite of a
    /// similar outline, made for the same place, saves the rows that are in both.
    static std::shared_ptr<const Sprite> make(const Primitive &primitive,
                                              const QTransform &canvasToDevice, const QRect &area,
                                              const Sprite *similar = nullptr);

    Kind kind() const { return m_kind; }
    int bytesPerPixel() const { return m_kind == Kind::mask ? 1 : 4; }
    /// Where it was when it was made. The cells may reach a little beyond the right edge.
    QRect bounds() const { return m_bounds; }
    /// The part of the frame that it was made for; it knows nothing of what lies beyond.
    QRect area() const { return m_area; }
    /// Memory of the pixels.
    qsizetype bytes() const { return m_bytes; }
    /// No two sprites of a process have the same.
    quint32 serial() const { return m_serial; }

    /// How it was made from another.
    struct Kinship
    {
        quint32 serial;      // of the other
        QRect bounds;        // of the other
        OutlineRows changed; // all that differs, of the frame that both were made for
    };
    const std::optional<Kinship> &kinship() const { return m_kinship; }

    /// `row` counts from the top of `bounds`.
    std::span<const SpriteRun> row(int row) const
    {
        return {m_runs.data() + m_rowStarts[std::size_t(row)],
                m_rowStarts[std::size_t(row) + 1] - m_rowStarts[std::size_t(row)]};
    }
    /// The longest full run of a row; no pixels where there is none.
    struct Span
    {
        int x = 0;
        int pixels = 0;
    };
    Span fullSpan(int row) const { return m_fullSpans[std::size_t(row)]; }
    bool hasFullSpans() const { return m_hasFullSpans; }

private:
    class Builder;
    struct Block
    {
        static constexpr std::size_t cacheLine = 64;
        static std::unique_ptr<quint8, void (*)(quint8 *)> make(std::size_t bytes);
        static void free(quint8 *bytes);
    };

    /// What a long outline was made from.
    struct Origin
    {
        OutlineParts parts;
        QTransform toDevice;
        QRect shown;
    };

    Sprite() = default;
    void addFill(const FilledPath &fill, const QTransform &toDevice, const QRect &area);
    /// False, and nothing added, where too little is the same.
    bool addFillLike(const FilledPath &fill, const Sprite &similar);
    /// `shown` is what a clip leaves of `area`.
    void addPicture(const PlacedPicture &picture, const QTransform &toDevice, const QRect &area,
                    const QRect &shown);

    Kind m_kind = Kind::mask;
    quint32 m_serial = 0;
    QRect m_bounds;
    QRect m_area;
    std::vector<std::unique_ptr<quint8, void (*)(quint8 *)>> m_blocks;
    std::vector<SpriteRun> m_runs;
    std::vector<quint32> m_rowStarts; // one more than rows
    std::vector<Span> m_fullSpans;
    bool m_hasFullSpans = false;
    qsizetype m_bytes = 0;
    std::optional<Origin> m_origin;
    std::optional<Kinship> m_kinship;
};

} // namespace tessara
