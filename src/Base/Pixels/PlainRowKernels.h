// The kernels of RowBlending as plain loops, for processors whose vectors lack a byte shuffle.
#pragma once

#include "Base/Pixels/RowBlending.h"

namespace tessara {

const RowKernels &plainRowKernels();

} // namespace tessara
