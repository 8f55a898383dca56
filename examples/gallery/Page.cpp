// SPDX-License-Identifier: MIT
#include "Page.h"

#include "Theme.h"

#include <QAbstractSpinBox>
#include <QFontInfo>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

Page::Page(const QString &heading, const QString &summary, QWidget *parent)
    : QWidget(parent)
    , m_content(new QVBoxLayout)
{
    auto *const title = new QLabel(heading);
    title->setFont(Theme::font(Theme::heading));
    title->setObjectName(u"heading"_s);
    auto *const text = new QLabel(summary);
    text->setWordWrap(true);
    text->setForegroundRole(QPalette::PlaceholderText);

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4 * Theme::unit, 4 * Theme::unit, 4 * Theme::unit, 4 * Theme::unit);
    layout->setSpacing(Theme::unit);
    layout->addWidget(title);
    layout->addWidget(text);
    layout->addSpacing(Theme::unit);
    m_content->setSpacing(2 * Theme::unit);
    layout->addLayout(m_content, 1);
    setAccessibleName(heading);
}

void Page::alignTexts()
{
    const Qt::Alignment leftToRight = Qt::AlignLeft;
    const Qt::Alignment rightToLeft = Qt::AlignRight | Qt::AlignAbsolute;
    const Qt::Alignment wanted = isRightToLeft() ? rightToLeft : leftToRight;
    const QList<QLabel *> labels = findChildren<QLabel *>();
    for (QLabel *const label : labels) {
        const Qt::Alignment side = label->alignment() & Qt::AlignHorizontal_Mask;
        const bool isCode = QFontInfo(label->font()).fixedPitch();
        if (!isCode && (side == leftToRight || side == rightToLeft))
            label->setAlignment(wanted | (label->alignment() & Qt::AlignVertical_Mask));
    }
    const QList<QAbstractSpinBox *> boxes = findChildren<QAbstractSpinBox *>();
    for (QAbstractSpinBox *const box : boxes)
        box->setAlignment(wanted | Qt::AlignVCenter);
}

QFrame *makeCard(const QString &title, QWidget *parent)
{
    auto *const card = new QFrame(parent);
    card->setObjectName(u"card"_s);
    auto *const layout = new QVBoxLayout(card);
    layout->setContentsMargins(2 * Theme::unit, 2 * Theme::unit, 2 * Theme::unit, 2 * Theme::unit);
    layout->setSpacing(Theme::unit);
    if (!title.isEmpty()) {
        auto *const label = new QLabel(title);
        label->setFont(Theme::font(Theme::strong));
        layout->addWidget(label);
    }
    return card;
}

void setClearButton(QLineEdit *field, bool isShown)
{
    field->setClearButtonEnabled(isShown);
    if (auto *const button = field->findChild<QToolButton *>())
        button->setAccessibleName(Page::tr("Clear"));
}
