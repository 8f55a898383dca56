// SPDX-License-Identifier: MIT
#include "ui_AllViews.h"

#include <pellarvine/Platform/NSNib.h>

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QWidget form;
    Ui::AllViews views;
    views.setupUi(&form);
    NS::Nib::awaken(&form);
    form.show();
    const bool isStyled = views.markupLabel->stringValue() == QLatin1String("Saved 12 files");
    const bool isRed = views.colorPickerButton->color() == QColor(231, 76, 60);
    const bool isRight = views.textField->alignment() == (Qt::AlignRight | Qt::AlignTop);
    return isStyled && isRed && isRight ? 0 : 1;
}
