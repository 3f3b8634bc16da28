// Draws the small pictures of presets without ever being in the way.
#pragma once

#include <QQuickAsyncImageProvider>
#include <QThreadPool>

#include "UI/presets/PresetThumbnails.h"

#include <atomic>
#include <memory>

namespace tessara {

/// "image://presets/NUMBER/CORNER": NUMBER is that of the content in `PresetThumbnails`, CORNER the
/// radius of the upper corners in pixels of the picture. One thread draws one picture at a time,
/// and only while a processor has nothing else to do; what scrolls out of sight is given up.
class PresetThumbnailProvider : public QQuickAsyncImageProvider
{
public:
    explicit PresetThumbnailProvider(std::shared_ptr<PresetThumbnails> thumbnails);
    ~PresetThumbnailProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id,
                                              const QSize &requestedSize) override;

private:
    std::shared_ptr<PresetThumbnails> m_thumbnails;
    std::shared_ptr<std::atomic<bool>> m_isOpen = std::make_shared<std::atomic<bool>>(true);
    QThreadPool m_thread; // last: it ends before what it reads
};

} // namespace tessara
