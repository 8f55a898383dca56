// SPDX-License-Identifier: MIT
// A tea timer. Tea.storyboard describes its screens and the transitions between them.
#include <pellarvine/Pellarvine/NavigationItemViewController.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSStoryboardSegue.h>

#include <QApplication>
#include <QProgressBar>
#include <QTimeLine>
#include <QTreeWidget>

class BrewController : public Pellarvine::NavigationItemViewController
{
    Q_OBJECT
    Q_PROPERTY(QProgressBar *progress MEMBER progress)
public:
    using NavigationItemViewController::NavigationItemViewController;
    void viewDidLoad() override
    {
        progress->setMaximum(seconds);
        auto *const clock = new QTimeLine(1000 * seconds, this);
        clock->setFrameRange(0, seconds);
        clock->setEasingCurve(QEasingCurve::Linear);
        connect(clock, &QTimeLine::frameChanged, progress, &QProgressBar::setValue);
        connect(clock, &QTimeLine::finished, this, &BrewController::finished);
        clock->start();
    }
    QProgressBar *progress = nullptr;
    int seconds = 0;
    Q_SIGNAL void finished();
};

class TeasController : public Pellarvine::NavigationItemViewController
{
    Q_OBJECT
    Q_PROPERTY(QTreeWidget *teas MEMBER teas)
public:
    using NavigationItemViewController::NavigationItemViewController;
    void viewDidLoad() override { teas->setCurrentItem(teas->topLevelItem(0)); }
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *) override
    {
        auto *const brew = qobject_cast<BrewController *>(segue->destinationController());
        brew->seconds = 60 * teas->currentItem()->text(1).toInt();
    }
    QTreeWidget *teas = nullptr;
};

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    NS::registerClass<TeasController>();
    NS::registerClass<BrewController>();
    const std::unique_ptr<QObject> window(NS::Storyboard::storyboardWithName(QStringLiteral("Tea"))
                                                  ->instantiateInitialController());
    qobject_cast<NS::ViewController *>(window.get())->view()->show();
    return QApplication::exec();
}
#include "main.moc"
