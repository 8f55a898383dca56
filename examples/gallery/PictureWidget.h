// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A widget that draws something to look at, and is a graphic to screen readers. Give it a name
/// with setAccessibleName().
class PictureWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PictureWidget(QWidget *parent = nullptr);
};
