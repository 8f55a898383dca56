// SPDX-License-Identifier: MIT
#include "ExitWhenShown.h"
#include "GalleryWindow.h"
#include "Pages.h"
#include "Screenshots.h"
#include "Theme.h"

#include <pellarvine/Pellarvine/Application.h>
#include <pellarvine/Platform/Translations.h>
#include <pellarvine/Platform/Version.h>

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// The value of "--name value" or "--name=value". Empty if it is missing. It is read before the
// application object is made, which fixes the platform and the scale.
QByteArray optionValue(int argc, char **argv, QByteArrayView name)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArrayView argument(argv[i]);
        if (argument == name)
            return i + 1 < argc ? argv[i + 1] : "";
        if (argument.startsWith(name) && argument.size() > name.size()
            && argument[name.size()] == '=')
            return argument.sliced(name.size() + 1).toByteArray();
    }
    return {};
}

QtMessageHandler defaultMessageHandler = nullptr;

// Hides the warnings of Qt's offscreen platform about functions that it lacks.
void printMessageOffscreen(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith("This plugin does not support "_L1))
        defaultMessageHandler(type, context, text);
}

int fail(const QString &message)
{
    std::fprintf(stderr, "gallery: %s\n", qPrintable(message));
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    const bool hasNoDisplay = qEnvironmentVariableIsEmpty("DISPLAY")
                              && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    const bool needsNoWindow = !optionValue(argc, argv, "--screenshots").isEmpty() || hasNoDisplay;
    if (needsNoWindow && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QByteArray scaleFactor = optionValue(argc, argv, "--scale");
    if (!scaleFactor.isEmpty())
        qputenv("QT_SCALE_FACTOR", scaleFactor);

    Pellarvine::Application application(argc, argv);
    if (QApplication::platformName() == "offscreen"_L1)
        defaultMessageHandler = qInstallMessageHandler(&printMessageOffscreen);
    QApplication::setApplicationName(u"gallery"_s);
    QApplication::setApplicationDisplayName(u"Pellarvine Gallery"_s);
    QApplication::setApplicationVersion(
            QString::fromLatin1(reinterpret_cast<const char *>(PellarvineVersionString)));

    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate(
            "main", "Shows every piece of Pellarvine on a page of its own."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption page(
            u"page"_s, QApplication::translate("main", "Open on the page <name>."), u"name"_s);
    const QCommandLineOption list(u"list"_s,
                                  QApplication::translate("main", "Print the pages' names."));
    const QCommandLineOption screenshots(
            u"screenshots"_s,
            QApplication::translate("main", "Render every page to <folder>/NAME.png and exit."),
            u"folder"_s);
    const QCommandLineOption scale(
            u"scale"_s,
            QApplication::translate("main",
                                    "Device pixels per device-independent pixel: 1, 2, 1.5, …"),
            u"factor"_s);
    const QCommandLineOption dark(u"dark"_s,
                                  QApplication::translate("main", "Use the dark palette."));
    const QCommandLineOption rightToLeft(
            u"rtl"_s, QApplication::translate(
                              "main", "Lay out from right to left; the library's own texts are "
                                      "Arabic then."));
    QCommandLineOption exitWhenShown(u"exit-when-shown"_s,
                                     QApplication::translate("main", "Exit once it is painted."));
    exitWhenShown.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(exitWhenShown);
    parser.addOptions({ page, list, screenshots, scale, dark, rightToLeft });
    parser.process(application);
    if (!parser.positionalArguments().isEmpty())
        return fail(QApplication::translate("main", "unexpected argument %1")
                            .arg(parser.positionalArguments().constFirst()));

    if (parser.isSet(list)) {
        for (const PageEntry &entry : pages())
            std::printf("%s\n", qPrintable(entry.name));
        return 0;
    }

    Theme::apply(application, parser.isSet(dark) ? Theme::dark : Theme::preferredScheme());
    if (parser.isSet(rightToLeft)) {
        QApplication::setLayoutDirection(Qt::RightToLeft);
        Pellarvine::installTranslations(QLocale(QLocale::Arabic));
    }

    if (parser.isSet(screenshots)) {
        const QString problem = writeScreenshots(parser.value(screenshots));
        return problem.isEmpty() ? 0 : fail(problem);
    }

    if (parser.isSet(exitWhenShown))
        new ExitWhenShown(application);
    GalleryWindow window;
    if (parser.isSet(page) && !window.showPage(parser.value(page)))
        return fail(QApplication::translate("main", "no page named %1").arg(parser.value(page)));
    window.show();
    return QApplication::exec();
}
