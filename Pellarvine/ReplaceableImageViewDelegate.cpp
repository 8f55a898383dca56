// SPDX-License-Identifier: MIT
#include "Pellarvine/ReplaceableImageViewDelegate.h"

namespace Pellarvine {

ReplaceableImageViewDelegate::~ReplaceableImageViewDelegate() = default;

} // namespace Pellarvine
