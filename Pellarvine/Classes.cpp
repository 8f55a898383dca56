// SPDX-License-Identifier: MIT
// The room's classes that interface files and storyboards can name.
#include <pellarvine/Pellarvine/ColorPickerButton.h>
#include <pellarvine/Pellarvine/ColorPickerButtonCell.h>
#include <pellarvine/Pellarvine/ReplaceableImageView.h>
#include <pellarvine/Platform/ClassRegistry.h>

namespace Pellarvine {

namespace {

// Runs while the library is loaded, and so before anything of the host's is registered.
[[maybe_unused]] const bool areRegistered = [] {
    NS::registerClass<ColorPickerButton>();
    NS::registerClass<ColorPickerButtonCell>();
    NS::registerClass<ColorPickerViewController>();
    NS::registerClass<ReplaceableImageView>();
    return true;
}();

} // namespace

} // namespace Pellarvine
