#include "Classes.h"

#include <pellarvine/Pellarvine/Application.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSViewController.h>
#include <pellarvine/Platform/Translations.h>

#include <QCommandLineParser>
#include <QIcon>
#include <QLibraryInfo>
#include <QMenu>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    Pellarvine::Application application(argc, argv);
    QApplication::setDesktopFileName(u"@IDENTIFIER@"_s);
    QApplication::setWindowIcon(QIcon::fromTheme(u"@IDENTIFIER@"_s));
    QTranslator qtTranslator;
    if (qtTranslator.load(QLocale(), u"qtbase"_s, u"_"_s,
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtTranslator);
    Pellarvine::installTranslations();
    QTranslator translator;
    if (translator.load(QLocale(), u"@NAME@"_s, u"_"_s, u":/translations"_s))
        QApplication::installTranslator(&translator);

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.process(application);

    pellarvineRegisterClasses();
    const std::unique_ptr<QObject> scene(
            NS::Storyboard::storyboardWithName(u"Main"_s)->instantiateInitialController());
    QWidget *const window = qobject_cast<NS::ViewController *>(scene.get())->view();
    window->findChild<QMenu *>(u"helpMenu"_s)->addAction(application.aboutAction());
    window->show();
    return QApplication::exec();
}
