// SPDX-License-Identifier: MIT
#include "Command.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

const QList<Command> &commands()
{
    static const QList<Command> all {
        { "seal", "encrypt a file under a passphrase", &runSeal },
        { "open", "decrypt a sealed file", &runOpen },
        { "digest", "print checksums of files", &runDigest },
        { "color", "show colors given in hexadecimal", &runColor },
        { "markup", "turn markup into styled text", &runMarkup, true },
    };
    return all;
}

const Command *commandNamed(const QString &name)
{
    const auto &all = commands();
    const auto command = std::find_if(all.begin(), all.end(), [&](const Command &candidate) {
        return name == QLatin1String(candidate.name);
    });
    return command == all.end() ? nullptr : &*command;
}

void parse(QCommandLineParser &parser, const QString &name, const QStringList &arguments)
{
    const QCommandLineOption help({ u"h"_s, u"help"_s }, u"Show this help."_s);
    parser.addOption(help);
    // The parser takes the first argument for the program's name and shows it in the help.
    const QStringList line = QStringList { u"pellarvine "_s + name } + arguments;
    if (!parser.parse(line))
        throw CommandError(ExitStatus::badUsage, parser.errorText());
    if (parser.isSet(help)) {
        QString text = parser.helpText();
        const QString program = QCoreApplication::arguments().constFirst();
        text.replace(u"Usage: "_s + program, u"Usage: "_s + line.first());
        std::fputs(qPrintable(text), stdout);
        std::exit(int(ExitStatus::success));
    }
}
