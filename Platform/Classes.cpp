// SPDX-License-Identifier: MIT
// The room's classes that interface files and storyboards can name.
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSButton.h>
#include <pellarvine/Platform/NSImageView.h>
#include <pellarvine/Platform/NSViewController.h>

namespace NS {

namespace {

// Runs while the library is loaded, and so before anything of the host's is registered.
[[maybe_unused]] const bool areRegistered = [] {
    registerClass<Button>();
    registerClass<ImageView>();
    registerClass<ViewController>();
    return true;
}();

} // namespace

} // namespace NS
