// An image as large as a frame, of which only what is drawn takes memory.
#pragma once

#include <QImage>

namespace tessara {

/// Transparent at first. What begins elsewhere a painter rounds otherwise; here it draws a part of
/// a frame in the frame's own coordinates.
class SparseImage
{
public:
    SparseImage() = default;
    /// Throws std::bad_alloc where there is no room for it.
    SparseImage(QSize size, QImage::Format format);

    QImage &image() { return m_image; }
    const QImage &image() const { return m_image; }

    /// What is in these rows is no longer needed. They may still be read, with anything in them.
    void giveBack(int firstRow, int rows);

private:
    QImage m_image;
};

} // namespace tessara
