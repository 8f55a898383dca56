// SPDX-License-Identifier: MIT
// Notes in an encrypted file. docs/tutorial.md explains this program.
#include "NotesController.h"

#include <pellarvine/Ostrevane/App.h>
#include <pellarvine/Pellarvine/Application.h>

#include <QCommandLineParser>
#include <QMessageBox>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    Pellarvine::Application application(argc, argv);
    QApplication::setOrganizationName(u"org.example"_s); // the folder of the settings
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(u"file"_s,
                                 QApplication::translate("main", "The notebook, if not your own."),
                                 u"[file]"_s);
    parser.process(application);

    QString file = parser.positionalArguments().value(0);
    if (file.isEmpty()) {
        const std::optional<QUrl> folder = Pellarvine::App::applicationSupportSubdirectory();
        if (!folder) {
            QMessageBox::critical(
                    nullptr, Pellarvine::App::name(),
                    QApplication::translate("main", "There is no folder for the notes."));
            return 1;
        }
        file = folder->toLocalFile() + u"Notes.sealed"_s;
    }

    Notebook notebook(file);
    const std::unique_ptr<NotesController> window = NotesController::make(&notebook);
    window->view()->show();
    return QApplication::exec();
}
