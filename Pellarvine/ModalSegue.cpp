// SPDX-License-Identifier: MIT
#include "Pellarvine/ModalSegue.h"

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isModalSegueRegistered =
        (NS::StoryboardSegue::registerClass<ModalSegue>(), true);

} // namespace

ModalSegue::~ModalSegue() = default;

void ModalSegue::perform() { }

} // namespace Pellarvine
