// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSViewController.h>

namespace Pellarvine {

/// A base class for controllers in the stack of a `NavigationController`. It adds nothing: the
/// stack takes other view controllers as well.
///
///     class LetterController : public Pellarvine::NavigationItemViewController
///     {
///         Q_OBJECT
///     public:
///         using NavigationItemViewController::NavigationItemViewController;
///     };
///
/// Owned by its QObject parent or, without one, by its parent controller. Main thread only.
class PELLARVINE_EXPORT NavigationItemViewController : public NS::ViewController
{
    Q_OBJECT

public:
    explicit NavigationItemViewController(QObject *parent = nullptr);
    /// With a view from the interface file of that name. The file is read when the view is first
    /// requested; view() throws NibError then.
    explicit NavigationItemViewController(const QString &nibName, QObject *parent = nullptr);
    ~NavigationItemViewController() override;
};

} // namespace Pellarvine
