// SPDX-License-Identifier: MIT
// The room's classes that interface files and storyboards can name.
#include <pellarvine/Pellarvine/BorderView.h>
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Pellarvine/InspectorSectionTableCellView.h>
#include <pellarvine/Pellarvine/InspectorSectionView.h>
#include <pellarvine/Pellarvine/SolidView.h>
#include <pellarvine/Pellarvine/ToolBarView.h>
#include <pellarvine/Pellarvine/Window.h>
#include <pellarvine/Platform/ClassRegistry.h>

namespace Pellarvine {

namespace {

// Runs while the library is loaded, and so before anything of the host's is registered.
[[maybe_unused]] const bool areRegistered = [] {
    NS::registerClass<BorderView>();
    NS::registerClass<FullWidthSegmentedControl>();
    NS::registerClass<InspectorSectionTableCellView>();
    NS::registerClass<InspectorSectionView>();
    NS::registerClass<SolidView>();
    NS::registerClass<ToolBarView>();
    NS::registerClass<Window>();
    return true;
}();

} // namespace

} // namespace Pellarvine
