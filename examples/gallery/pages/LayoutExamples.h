// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// What constraints make beyond pinning: a form, a stack with its knobs, and an interface file.
QWidget *makeLayoutExamples();
