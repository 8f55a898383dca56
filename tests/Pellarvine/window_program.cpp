// SPDX-License-Identifier: MIT
// A window for WindowOnDesktopTest and tests/desktops. It prints its frame (y downwards) and state,
// clicks on the button in its title bar, and when it was closed.
#include <pellarvine/Pellarvine/Window.h>

#include <QApplication>
#include <QCloseEvent>
#include <QPushButton>

#include <cstdio>

namespace {

void tell(const QByteArray &line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

class Subject : public Pellarvine::Window
{
public:
    Subject()
    {
        setWindowTitle(QStringLiteral("Subject"));
        setTitleBarHeight(40);
        auto *const button = new QPushButton(QStringLiteral("Seal"));
        connect(button, &QPushButton::clicked, this, [] { tell("clicked"); });
        setTrafficLightHorizontalMargin(60); // the view begins beyond the buttons
        setInnerTitleBarView(button);
        awakeFromNib();
        button->setMaximumWidth(60);
        setMinimumSize(300, 200);
        setGeometry(300, 200, 500, 320);
        connect(this, &NS::Window::frameChanged, this, [this] { tellFrame(); });
    }

protected:
    void showEvent(QShowEvent *event) override
    {
        Pellarvine::Window::showEvent(event);
        tellFrame();
    }
    void changeEvent(QEvent *event) override
    {
        Pellarvine::Window::changeEvent(event);
        if (event->type() == QEvent::WindowStateChange)
            tellFrame();
    }
    void closeEvent(QCloseEvent *event) override
    {
        Pellarvine::Window::closeEvent(event);
        tell("closed");
    }

private:
    void tellFrame()
    {
        tell("frame " + QByteArray::number(x()) + ' ' + QByteArray::number(y()) + ' '
             + QByteArray::number(width()) + ' ' + QByteArray::number(height()) + ' '
             + (isMaximized()   ? "zoomed"
                : isMinimized() ? "miniaturized"
                                : "normal"));
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Subject subject;
    subject.show();
    return QApplication::exec();
}
