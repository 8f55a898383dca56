// SPDX-License-Identifier: MIT
// The room's classes that interface files and storyboards can name.
#include "Base/ClassRegistry.h"
#include "Pellarvine/BorderView.h"
#include "Pellarvine/ColorPickerButton.h"
#include "Pellarvine/ColorPickerButtonCell.h"
#include "Pellarvine/FullWidthSegmentedControl.h"
#include "Pellarvine/HeightForWidthTextField.h"
#include "Pellarvine/InspectorSectionTableCellView.h"
#include "Pellarvine/InspectorSectionView.h"
#include "Pellarvine/MarkupLabel.h"
#include "Pellarvine/ReplaceableImageView.h"
#include "Pellarvine/SolidView.h"
#include "Pellarvine/ToolBarView.h"
#include "Pellarvine/Window.h"

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
