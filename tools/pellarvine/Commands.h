// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>

// The sub-commands, each in a file of its own. They throw CommandError.

void runSeal(const QByteArrayList &arguments);
void runOpen(const QByteArrayList &arguments);
void runDigest(const QByteArrayList &arguments);
void runNew(const QByteArrayList &arguments);

// Of the program for text.
void runColor(const QByteArrayList &arguments);
void runMarkup(const QByteArrayList &arguments);

// Of the program for forms.
void runCheck(const QByteArrayList &arguments);
