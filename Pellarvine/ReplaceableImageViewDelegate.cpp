// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/ReplaceableImageViewDelegate.h>

namespace Pellarvine {

ReplaceableImageViewDelegate::~ReplaceableImageViewDelegate() = default;

} // namespace Pellarvine
