// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"

#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSStoryboard.h>

#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

namespace {

// The form that editors and build tools parse: FILE:LINE:COLUMN: error: MESSAGE.
QByteArray line(const QString &file, qint64 lineNumber, qint64 column, const QString &message)
{
    const QString place = lineNumber > 0 ? u":%1:%2"_s.arg(lineNumber).arg(column) : QString();
    return QFile::encodeName(file + place) + ": error: " + message.toLocal8Bit();
}

// The problem of a file. Empty if it has none.
QByteArray problem(const QString &path)
{
    try {
        if (path.endsWith(".storyboard"_L1))
            NS::Storyboard::storyboardWithContentsOfFile(path)->check();
        else
            NS::Nib(QFileInfo(path).absoluteFilePath()).check();
        return {};
    } catch (const NS::NibError &error) {
        // Without the file's name and the place, which the caller prints in another form.
        const QString name = QFileInfo(error.file()).fileName();
        const QString text = QString::fromUtf8(error.what()).sliced(name.size());
        const QString place =
                error.line() > 0 ? u":%1:%2"_s.arg(error.line()).arg(error.column()) : QString();
        return line(error.file(), error.line(), error.column(), text.sliced(place.size() + 2));
    } catch (const NS::StoryboardError &error) {
        return line(error.fileName(), error.line(), error.column(), error.problem());
    }
}

// Loads a plugin. Its classes are registered during the loading, or by this function if it exists.
void load(const QByteArray &path)
{
    QLibrary library(QFileInfo(QFile::decodeName(path)).absoluteFilePath());
    if (!library.load())
        throw CommandError(ExitStatus::systemError, library.errorString().toLocal8Bit());
    if (const QFunctionPointer registerClasses = library.resolve("pellarvineRegisterClasses"))
        registerClasses();
}

} // namespace

void runCheck(const QByteArrayList &arguments)
{
    CommandLine commandLine(
            "check", u"Checks interface files and storyboards: classes, properties, names and "
                     u"pictures. Prints one line for each FILE that has a problem."_s);
    const QCommandLineOption plugin(
            u"plugin"_s,
            u"Load a library that registers classes, by static initialisation or in its function "
            u"pellarvineRegisterClasses(). May be given several times."_s,
            u"library"_s);
    commandLine.addOption(plugin);
    commandLine.addPositionalArgument(u"FILE"_s, u"Files that end in .ui or .storyboard."_s,
                                      u"FILE..."_s);
    commandLine.parse(arguments);
    if (commandLine.operands().isEmpty())
        throw CommandError(ExitStatus::badUsage, "check: no FILE given");
    for (const QByteArray &path : commandLine.values(plugin))
        load(path);
    int problems = 0;
    QByteArrayList printed; // a storyboard has the problems of its forms, too
    for (const QByteArray &path : commandLine.operands()) {
        const QByteArray text = problem(QFile::decodeName(path));
        if (text.isEmpty())
            continue;
        ++problems;
        if (printed.contains(text))
            continue;
        std::fprintf(stderr, "%s\n", text.constData());
        printed.append(text);
    }
    if (problems > 0)
        throw CommandError(ExitStatus::invalidFileFormat,
                           "check: problems in " + QByteArray::number(problems) + " of "
                                   + QByteArray::number(commandLine.operands().size()) + " files");
}
