// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSLayoutForm.h>
#include <pellarvine/Platform/NSView.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QSpinBox>
#include <QTextEdit>
#include <gtest/gtest.h>

#include <array>

using namespace Qt::StringLiterals;
using namespace NS;

namespace {

constexpr int border = 12;

struct Settings
{
    explicit Settings(Qt::LayoutDirection direction) { panel.setLayoutDirection(direction); }

    QWidget panel;
    QLabel *nameLabel = new QLabel(u"&Name:"_s);
    QLineEdit *name = new QLineEdit;
    QLabel *portLabel = new QLabel(u"&Port of the server:"_s);
    QSpinBox *port = new QSpinBox;
    QLabel *kindLabel = new QLabel(u"&Encryption:"_s);
    QComboBox *kind = new QComboBox;
    QCheckBox *remember = new QCheckBox(u"&Remember me"_s);

    void layOut(QSize size)
    {
        panel.resize(size);
        layoutSubtreeIfNeeded(&panel);
    }
};

} // namespace

TEST(LayoutForm, fields_stand_where_a_form_layout_puts_them)
{
    for (const Qt::LayoutDirection direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        std::array<QPushButton *, 2> fixed { new QPushButton, new QPushButton };
        for (QPushButton *const button : fixed)
            button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        Settings byAnchors(direction);
        LayoutConstraint::activateConstraints(form(&byAnchors.panel,
                                                   { { byAnchors.nameLabel, byAnchors.name },
                                                     { byAnchors.portLabel, byAnchors.port },
                                                     { byAnchors.kindLabel, byAnchors.kind },
                                                     { nullptr, byAnchors.remember },
                                                     { new QLabel(u"Fixed:"_s), fixed[0] } },
                                                   border));

        Settings byLayout(direction);
        auto *const layout = new QFormLayout(&byLayout.panel);
        layout->setContentsMargins(border, border, border, border);
        layout->addRow(byLayout.nameLabel->text(), byLayout.name);
        layout->addRow(byLayout.portLabel->text(), byLayout.port);
        layout->addRow(byLayout.kindLabel->text(), byLayout.kind);
        layout->addRow(QString(), byLayout.remember);
        layout->addRow(u"Fixed:"_s, fixed[1]);

        const QSize preferred = byLayout.panel.sizeHint();
        EXPECT_EQ(byAnchors.panel.sizeHint(), preferred);
        for (const QSize size : { preferred, QSize(400, 300) }) {
            byAnchors.layOut(size);
            byLayout.layOut(size);
            EXPECT_EQ(byAnchors.name->geometry(), byLayout.name->geometry());
            EXPECT_EQ(byAnchors.port->geometry(), byLayout.port->geometry());
            EXPECT_EQ(byAnchors.kind->geometry(), byLayout.kind->geometry());
            EXPECT_EQ(byAnchors.remember->geometry(), byLayout.remember->geometry());
            EXPECT_EQ(fixed[0]->geometry(), fixed[1]->geometry());
        }
        EXPECT_EQ(byAnchors.nameLabel->width(), byAnchors.portLabel->width());
    }
}

TEST(LayoutForm, a_field_that_asks_for_height_gets_what_is_left)
{
    Settings settings(Qt::LeftToRight);
    auto *const notes = new QTextEdit;
    LayoutConstraint::activateConstraints(
            form(&settings.panel,
                 { { settings.nameLabel, settings.name }, { settings.portLabel, notes } }));
    settings.layOut({ 400, 300 });
    EXPECT_EQ(notes->geometry().bottom(), 299);
    EXPECT_LT(settings.portLabel->geometry().bottom(), notes->y() + settings.name->height());
    EXPECT_EQ(settings.name->height(), settings.name->sizeHint().height());
}

TEST(LayoutForm, a_label_without_a_buddy_gets_the_field_and_the_styles_alignment)
{
    class RightAligning : public QProxyStyle
    {
        int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                      QStyleHintReturn *data) const override
        {
            return hint == SH_FormLayoutLabelAlignment
                           ? int(Qt::AlignRight)
                           : QProxyStyle::styleHint(hint, option, widget, data);
        }
    } style;
    Settings settings(Qt::LeftToRight);
    settings.panel.setStyle(&style);
    settings.portLabel->setBuddy(settings.kind);
    const auto constraints = form(&settings.panel, { { settings.nameLabel, settings.name },
                                                     { settings.portLabel, settings.port } });
    EXPECT_FALSE(constraints.isEmpty());
    EXPECT_EQ(settings.nameLabel->buddy(), settings.name);
    EXPECT_EQ(settings.nameLabel->alignment(), Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(settings.portLabel->buddy(), settings.kind);
    EXPECT_EQ(settings.portLabel->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
}

TEST(LayoutForm, without_labels_fields_take_the_whole_width_and_without_rows_there_is_nothing)
{
    Settings settings(Qt::LeftToRight);
    EXPECT_TRUE(form(&settings.panel, {}).isEmpty());
    LayoutConstraint::activateConstraints(
            form(&settings.panel, { { nullptr, settings.name }, { nullptr, settings.port } }));
    settings.layOut({ 400, 300 });
    EXPECT_EQ(settings.name->width(), 400);
    EXPECT_EQ(settings.port->width(), 400);
}
