// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// The sub-commands, each in a file of its own. They throw CommandError.

void runSeal(const QStringList &arguments);
void runOpen(const QStringList &arguments);
void runDigest(const QStringList &arguments);

// Those of the program for text.
void runColor(const QStringList &arguments);
void runMarkup(const QStringList &arguments);
