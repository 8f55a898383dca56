// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A widget that draws a picture. Its accessible role is a graphic; set its accessible name.
class PictureWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PictureWidget(QWidget *parent = nullptr);
};
