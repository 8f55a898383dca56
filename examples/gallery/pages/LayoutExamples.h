// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// Further uses of constraints: a form, a stack with its settings, and an interface file.
QWidget *makeLayoutExamples();
