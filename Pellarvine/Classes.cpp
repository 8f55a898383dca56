// SPDX-License-Identifier: MIT
// The room's classes that interface files and storyboards can name.
#include <pellarvine/Pellarvine/BorderView.h>
#include <pellarvine/Pellarvine/ColorPickerButton.h>
#include <pellarvine/Pellarvine/ColorPickerButtonCell.h>
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Pellarvine/HeightForWidthTextField.h>
#include <pellarvine/Pellarvine/InspectorSectionTableCellView.h>
#include <pellarvine/Pellarvine/InspectorSectionView.h>
#include <pellarvine/Pellarvine/MarkupLabel.h>
#include <pellarvine/Pellarvine/ReplaceableImageView.h>
#include <pellarvine/Pellarvine/SolidView.h>
#include <pellarvine/Pellarvine/ToolBarView.h>
#include <pellarvine/Pellarvine/Window.h>
#include <pellarvine/Platform/ClassRegistry.h>

namespace Pellarvine {

namespace {

// Runs while the library is loaded, and so before anything of the host's is registered.
[[maybe_unused]] const bool areRegistered = [] {
    NS::registerClass<BorderView>();
    NS::registerClass<ColorPickerButton>();
    NS::registerClass<ColorPickerButtonCell>();
    NS::registerClass<ColorPickerViewController>();
    NS::registerClass<FullWidthSegmentedControl>();
    NS::registerClass<HeightForWidthTextField>();
    NS::registerClass<InspectorSectionTableCellView>();
    NS::registerClass<InspectorSectionView>();
    NS::registerClass<MarkupLabel>();
    NS::registerClass<ReplaceableImageView>();
    NS::registerClass<SolidView>();
    NS::registerClass<ToolBarView>();
    NS::registerClass<Window>();
    return true;
}();

} // namespace

} // namespace Pellarvine
