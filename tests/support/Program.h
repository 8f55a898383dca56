// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>

/// The result of a program that has ended.
struct Outcome
{
    int status = -1; ///< the exit status; -1 if it crashed, did not start or did not end
    QByteArray output;
    QByteArray errors;
};

/// Runs the program built beside the tests, with `input` as its standard input. Its standard output
/// goes to the descriptor `standardOutput`, if one is given.
Outcome runProgram(const QString &name, const QStringList &arguments, const QByteArray &input = {},
                   int standardOutput = -1);

/// The path of a program built beside the tests.
QString programPath(const QString &name);
