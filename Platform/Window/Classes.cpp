// SPDX-License-Identifier: MIT
// The room's classes that interface files and storyboards can name.
#include "Base/ClassRegistry.h"
#include "Controls/NSButton.h"
#include "Controls/NSImageView.h"
#include "Controls/NSSegmentedControl.h"
#include "Controls/NSTableCellView.h"
#include "Controls/NSTextField.h"
#include "Scenes/NSViewController.h"
#include "Window/NSWindow.h"

namespace NS {

namespace {

// Runs while the library is loaded, and so before anything of the host's is registered.
[[maybe_unused]] const bool areRegistered = [] {
    registerClass<Button>();
    registerClass<ImageView>();
    registerClass<SegmentedControl>();
    registerClass<TableCellView>();
    registerClass<TextField>();
    registerClass<ViewController>();
    registerClass<Window>();
    return true;
}();

} // namespace

} // namespace NS
