// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationItemViewController.h"

#include "Base/ClassRegistry.h"

namespace Pellarvine {

namespace {

[[maybe_unused]] const bool isNavigationItemViewControllerRegistered =
        (NS::registerClass<NavigationItemViewController>(), true);

} // namespace

NavigationItemViewController::NavigationItemViewController(QObject *parent)
    : NS::ViewController(parent)
{ }

NavigationItemViewController::NavigationItemViewController(const QString &nibName, QObject *parent)
    : NS::ViewController(nibName, parent)
{ }

NavigationItemViewController::~NavigationItemViewController() = default;

} // namespace Pellarvine
