// High-quality scaling of premultiplied images.
#pragma once

#include <QSize>

#include "Base/Pixels/PixelConversion.h"

namespace tessara {

/// Stretches four-channel pixels, alpha last and colour premultiplied, from one size to another:
/// bicubic, widened when shrinking, so that fine detail turns even instead of flickering. No colour
/// comes out above its alpha. Both sizes are at least one by one.
void resample(SourceRows source, QSize sourceSize, TargetRows target, QSize targetSize);

} // namespace tessara
