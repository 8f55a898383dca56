// SPDX-License-Identifier: MIT
// A small window with popovers that are larger, and a line of text that reports events. An argument
// names another class for the window than NS::Window.
#include <pellarvine/Pellarvine/ColorPickerButton.h>
#include <pellarvine/Pellarvine/PopoverMessage.h>
#include <pellarvine/Platform/NSPopover.h>
#include <pellarvine/Platform/NSViewController.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;
using NS::Popover;

namespace {

QPushButton *button(const QString &text, QGridLayout *layout, int row, int column)
{
    auto *const made = new QPushButton(text);
    layout->addWidget(made, row, column);
    return made;
}

// A form of the window's size with a list, a dialog and, unless `isInner`, a popover.
QWidget *makeForm(bool isInner)
{
    auto *const form = new QWidget;
    form->setMinimumSize(260, 280);
    auto *const layout = new QGridLayout(form);
    auto *const name = new QLineEdit;
    name->setAccessibleName(isInner ? u"Inner name"_s : u"Name"_s);
    layout->addWidget(name, 0, 0);
    auto *const list = new QComboBox;
    list->addItems({ isInner ? u"Inner list"_s : u"List"_s, u"Other"_s });
    layout->addWidget(list, 1, 0);
    if (isInner)
        return form;
    auto *const dialog = new QDialog(form);
    dialog->setWindowTitle(u"Question"_s);
    auto *const answer = button(u"Answer"_s, new QGridLayout(dialog), 0, 0);
    QObject::connect(answer, &QPushButton::clicked, name, [name, dialog] {
        name->setText(u"answered"_s);
        dialog->accept();
    });
    QObject::connect(button(u"Ask"_s, layout, 2, 0), &QPushButton::clicked, dialog, &QDialog::open);
    auto *const more = button(u"More"_s, layout, 3, 0);
    auto *const inner = new Popover(form);
    auto *const controller = new NS::ViewController(inner);
    controller->setView(makeForm(true));
    controller->setTitle(u"Inner form"_s);
    inner->setContentViewController(controller);
    inner->setBehavior(Popover::Behavior::transient);
    inner->setOpener(more);
    QObject::connect(more, &QPushButton::clicked, inner,
                     [inner, more] { inner->showRelativeToRect({}, more, NS::RectEdge::maxX); });
    return form;
}

std::unique_ptr<QWidget> makeWindow(const QString &className, QWidget *content)
{
    const auto with = [content](auto window, auto setContent) -> std::unique_ptr<QWidget> {
        ((*window).*setContent)(content);
        return window;
    };
    if (className == "QMainWindow"_L1)
        return with(std::make_unique<QMainWindow>(), &QMainWindow::setCentralWidget);
    if (className == "QDockWidget"_L1)
        return with(std::make_unique<QDockWidget>(), &QDockWidget::setWidget);
    if (className != "QDialog"_L1 && className != "QWidget"_L1)
        return with(std::make_unique<NS::Window>(), &NS::Window::setContentView);
    auto window =
            className == "QDialog"_L1 ? std::make_unique<QDialog>() : std::make_unique<QWidget>();
    (new QGridLayout(window.get()))->addWidget(content);
    return window;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    auto *const content = new QWidget;
    auto *const layout = new QGridLayout(content);
    const auto window = makeWindow(QCoreApplication::arguments().value(1), content);
    window->setWindowTitle(u"Small"_s);
    auto *const events = new QLabel(u"Events:"_s);
    layout->addWidget(events, 0, 0, 1, 2);
    const auto tell = [events](const QString &event) {
        events->setText(events->text() + event);
    };

    Popover popover;
    auto *const controller = new NS::ViewController;
    controller->setView(makeForm(false));
    controller->setTitle(u"Form"_s);
    popover.setContentViewController(controller);
    QObject::connect(&popover, &Popover::didClose, events, [tell] { tell(u" closed"_s); });
    auto *const opener = button(u"Open"_s, layout, 1, 1);
    popover.setOpener(opener);
    const auto show = [&popover, opener](Popover::Behavior behavior) {
        popover.setBehavior(behavior);
        popover.showRelativeToRect({}, opener, NS::RectEdge::maxX);
    };
    QObject::connect(opener, &QPushButton::clicked, events,
                     [show] { show(Popover::Behavior::transient); });
    QObject::connect(button(u"Open later"_s, layout, 2, 1), &QPushButton::clicked, events, [show] {
        QTimer::singleShot(1500, [show] { show(Popover::Behavior::transient); });
    });
    QObject::connect(button(u"Keep open"_s, layout, 3, 1), &QPushButton::clicked, events,
                     [show] { show(Popover::Behavior::applicationDefined); });
    QObject::connect(button(u"Half open"_s, layout, 4, 1), &QPushButton::clicked, events,
                     [show] { show(Popover::Behavior::semitransient); });
    QObject::connect(button(u"Other"_s, layout, 1, 0), &QPushButton::clicked, events,
                     [tell] { tell(u" other"_s); });
    auto *const message = button(u"Message"_s, layout, 2, 0);
    QObject::connect(message, &QPushButton::clicked, message, [message] {
        Pellarvine::PopoverMessage::showMessage(
                QString(u"A message of many words. "_s).repeated(20), message);
    });
    auto *const color = new Pellarvine::ColorPickerButton;
    color->setAccessibleName(u"Paint"_s);
    layout->addWidget(color, 3, 0);
    window->resize(300, 200);
    window->show();
    opener->setFocus();
    return QApplication::exec();
}
