// SPDX-License-Identifier: MIT
// The room's classes that interface files and storyboards can name.
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSButton.h>
#include <pellarvine/Platform/NSImageView.h>
#include <pellarvine/Platform/NSSegmentedControl.h>
#include <pellarvine/Platform/NSTableCellView.h>
#include <pellarvine/Platform/NSTextField.h>
#include <pellarvine/Platform/NSViewController.h>
#include <pellarvine/Platform/NSWindow.h>

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
