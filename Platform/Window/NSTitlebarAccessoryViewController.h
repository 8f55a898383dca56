// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSViewController.h>

namespace NS {

/// A view below a window's standard title bar, which makes the title bar higher:
///
///     auto *const bar = new NS::TitlebarAccessoryViewController;
///     bar->setView(new SearchBar); // as wide as the title bar, within its own limits
///     window->addTitlebarAccessoryViewController(bar);
///
/// The title bar follows when the view changes its height. Main thread only.
class PELLARVINE_EXPORT TitlebarAccessoryViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(double fullScreenMinHeight READ fullScreenMinHeight WRITE setFullScreenMinHeight
                       NOTIFY fullScreenMinHeightChanged)

public:
    explicit TitlebarAccessoryViewController(QObject *parent = nullptr);
    ~TitlebarAccessoryViewController() override;

    /// The least height of the title bar in full screen, in device-independent pixels. Without one,
    /// full screen shows only the standard title bar. Default: 0. Negative and non-finite numbers
    /// count as 0.
    double fullScreenMinHeight() const;
    void setFullScreenMinHeight(double height);

Q_SIGNALS:
    void fullScreenMinHeightChanged(double height);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
