// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"
#include "SystemError.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// Names that CMake and Qt reserve for targets, and CMake for a folder.
const QStringList reservedNames {
    u"all"_s,
    u"ALL_BUILD"_s,
    u"clean"_s,
    u"CMakeFiles"_s,
    u"edit_cache"_s,
    u"help"_s,
    u"install"_s,
    u"INSTALL"_s,
    u"lupdate"_s,
    u"package"_s,
    u"PACKAGE"_s,
    u"package_source"_s,
    u"preinstall"_s,
    u"rebuild_cache"_s,
    u"RUN_TESTS"_s,
    u"test"_s,
    u"ZERO_CHECK"_s,
    u"release_translations"_s,
    u"update_translations"_s,
};

struct Program
{
    QString name;
    QString identifier;

    QString filled(QString text) const
    {
        return text.replace("@NAME@"_L1, name)
                .replace("@TITLE@"_L1, name.left(1).toUpper() + name.mid(1))
                .replace("@IDENTIFIER@"_L1, identifier)
                .replace("@DATE@"_L1, QDate::currentDate().toString(Qt::ISODate));
    }

    // "program.desktop" is named after the identifier, "program_de.ts" after the program.
    QString fileName(const QString &form) const
    {
        if (form.startsWith("program_"_L1))
            return name + form.mid(7);
        return form.startsWith("program."_L1) ? identifier + form.mid(7) : form;
    }
};

void write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(contents) < 0
        || !file.flush()) {
        throw CommandError(ExitStatus::systemError,
                           QFile::encodeName(path) + ": " + file.errorString().toLocal8Bit());
    }
}

void check(const Program &program)
{
    static const QRegularExpression name(u"^[A-Za-z][A-Za-z0-9_]*\\z"_s,
                                         QRegularExpression::DontCaptureOption);
    static const QRegularExpression identifier(
            u"^[A-Za-z][A-Za-z0-9_-]*(\\.[A-Za-z][A-Za-z0-9_-]*)+\\z"_s);
    if (!name.match(program.name).hasMatch()) {
        throw CommandError(ExitStatus::badUsage,
                           "new: NAME begins with a letter and consists of letters, digits and _");
    }
    if (reservedNames.contains(program.name))
        throw CommandError(ExitStatus::badUsage, "new: CMake reserves the name '"
                                                         + program.name.toLatin1()
                                                         + "' for itself");
    if (!identifier.match(program.identifier).hasMatch())
        throw CommandError(ExitStatus::badUsage,
                           "new: an identifier has the form org.example.letters");
}

} // namespace

void runNew(const QByteArrayList &arguments)
{
    CommandLine line("new", u"Writes a small program into the new folder NAME: a window with a "
                            u"form, a storyboard, an about window,\ntranslations and a test. It is "
                            u"built by CMake."_s);
    const QCommandLineOption identifier({ u"i"_s, u"identifier"_s },
                                        u"The program's identifier. Default: org.example.NAME."_s,
                                        u"id"_s);
    line.addOption(identifier);
    line.addPositionalArgument(u"NAME"_s, u"The program's name."_s, u"NAME"_s);
    line.parse(arguments);
    if (line.operands().size() != 1)
        throw CommandError(ExitStatus::badUsage, "new: one NAME is needed");
    const QByteArray folder = line.operands().constFirst();
    Program program { QString::fromUtf8(folder), QString() };
    program.identifier = line.isSet(identifier) ? QString::fromUtf8(line.value(identifier))
                                                : "org.example."_L1 + program.name;
    check(program);

    if (::mkdir(folder.constData(), S_IRWXU | S_IRWXG | S_IRWXO) != 0)
        throwSystemError(folder, errno);
    const QDir forms(u":/new"_s);
    const QStringList names = forms.entryList(QDir::Files);
    for (const QString &form : names) {
        QFile file(forms.filePath(form));
        if (!file.open(QIODevice::ReadOnly))
            throw CommandError(ExitStatus::systemError, file.errorString().toLocal8Bit());
        write(program.name + u'/' + program.fileName(form),
              program.filled(QString::fromUtf8(file.readAll())).toUtf8());
    }
    const char *const name = folder.constData();
    if (std::printf("Build and run it:\n\n  cmake -S %s -B %s/build && cmake --build %s/build\n"
                    "  %s/build/%s\n",
                    name, name, name, name, name)
                < 0
        || std::fflush(stdout) != 0)
        throwSystemError("standard output", errno);
}
