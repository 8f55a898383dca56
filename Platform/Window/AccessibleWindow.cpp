// SPDX-License-Identifier: MIT
#include "Window/AccessibleWindow.h"

#include "Window/WindowFrame.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Tells the same as Qt's interface, which is not exported.
class AccessibleMessageBox : public AccessibleWindow
{
public:
    explicit AccessibleMessageBox(QMessageBox *box)
        : AccessibleWindow(box, QAccessible::AlertMessage)
    { }

    QString text(QAccessible::Text text) const override
    {
        if (text == QAccessible::Value)
            return box()->text();
        if (text == QAccessible::Help)
            return box()->informativeText();
        return AccessibleWindow::text(text);
    }

protected:
    QString ownName() const override { return box()->text(); }

private:
    QMessageBox *box() const { return static_cast<QMessageBox *>(widget()); }
};

// `className` is that of the window or of a base class. The classes are those that Qt knows: more
// derived ones may have an interface of the program's.
QAccessibleInterface *interfaceFor(const QString &className, QObject *object)
{
    auto *const window = qobject_cast<QWidget *>(object);
    const bool isOurs =
            window && (WindowFrame::of(window) || !AccessiblePopups::popupsOf(window).isEmpty());
    if (!isOurs)
        return nullptr;
    if (className == "QMessageBox"_L1)
        return new AccessibleMessageBox(static_cast<QMessageBox *>(window));
    if (className == "QDialog"_L1)
        return new AccessibleWindow(window, QAccessible::Dialog);
    if (className == "QMainWindow"_L1 || className == "QDockWidget"_L1 || className == "QWidget"_L1)
        return new AccessibleWindow(window);
    return nullptr;
}

} // namespace

QRect AccessibleWindow::rect() const
{
    const QRect seen = seenRect(widget()).translated(widget()->mapToGlobal(QPoint()));
    return AccessiblePopups::rect().intersected(seen);
}

void AccessibleWindow::replaceStandard(QWidget *window)
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(&interfaceFor);
        return true;
    }();
    Q_UNUSED(isInstalled)
    // A screen reader may have asked before, and then Qt keeps the interface.
    QAccessibleInterface *const former = QAccessible::queryAccessibleInterface(window);
    if (!former || dynamic_cast<AccessiblePopups *>(former))
        return;
    const auto tell = [window](QAccessible::Event type) {
        QAccessibleEvent event(window, type);
        if (window->isVisible())
            QAccessible::updateAccessibility(&event);
    };
    tell(QAccessible::ObjectDestroyed);
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(former));
    tell(QAccessible::ObjectCreated);
}

} // namespace Pellarvine::detail
