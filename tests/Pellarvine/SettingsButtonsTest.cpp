// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/SettingsButtons.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>

#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <tuple>

using namespace Qt::StringLiterals;

namespace Pellarvine {

TEST(SettingsButtons, give_the_standard_buttons_of_a_dialog_their_meaning)
{
    const QTemporaryDir folder;
    Settings settings(
            std::make_unique<QSettings>(folder.filePath(u"app.ini"_s), QSettings::IniFormat), {},
            { { u"port"_s, 80 } });
    QDialog dialog;
    QLineEdit field(&dialog);
    QDialogButtonBox box;
    box.setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply
                           | QDialogButtonBox::Reset | QDialogButtonBox::RestoreDefaults);
    connectButtons(&settings, &box);
    box.setParent(&dialog);
    NS::BindingOptions options;
    options.commit = NS::BindingOptions::whenEditingFinishes;
    options.onInvalid = [](const QString &) {
    };
    NS::bind(&field, u"text"_s, &settings, u"port"_s, options);
    const auto enabled = [&] {
        return std::tuple(box.button(QDialogButtonBox::Apply)->isEnabled(),
                          box.button(QDialogButtonBox::Reset)->isEnabled(),
                          box.button(QDialogButtonBox::RestoreDefaults)->isEnabled());
    };
    dialog.open();
    EXPECT_EQ(enabled(), std::tuple(false, false, false));
    settings.setProperty("port", 443);
    EXPECT_EQ(enabled(), std::tuple(true, true, true));
    box.button(QDialogButtonBox::Reset)->click();
    EXPECT_EQ(field.text(), u"80"_s);
    settings.setProperty("port", 443);
    box.button(QDialogButtonBox::Apply)->click();
    EXPECT_EQ(enabled(), std::tuple(false, false, true));
    box.button(QDialogButtonBox::RestoreDefaults)->click();
    EXPECT_EQ(field.text(), u"80"_s);
    EXPECT_EQ(enabled(), std::tuple(true, true, false));

    // OK stores the field's value unless it is refused.
    field.setText(u"none"_s);
    box.button(QDialogButtonBox::Ok)->click();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(field.property("invalid").toBool());
    field.setText(u"8080"_s);
    box.button(QDialogButtonBox::Ok)->click();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(settings.isModified());
    EXPECT_EQ(settings.property("port"), 8080);

    dialog.open();
    settings.setProperty("port", 1);
    box.button(QDialogButtonBox::Cancel)->click();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(settings.property("port"), 8080);

    // A typed value, valid or not, enables Apply, and each of these discards it.
    const std::function<void()> discards[] = {
        [&] { box.button(QDialogButtonBox::Reset)->click(); },
        [&] { box.button(QDialogButtonBox::Cancel)->click(); },
        [&] { QTest::keyClick(&field, Qt::Key_Escape); },
        [&] { dialog.close(); },
    };
    for (const auto &discard : discards) {
        for (const QString &text : { u"70"_s, u"none"_s }) {
            dialog.open();
            field.setText(text);
            EXPECT_EQ(enabled(), std::tuple(true, true, true));
            EXPECT_EQ(NS::commitEditing(&dialog), text == u"70"_s);
            discard();
            EXPECT_EQ(field.text(), u"8080"_s);
            EXPECT_FALSE(field.property("invalid").isValid());
            EXPECT_EQ(enabled(), std::tuple(false, false, true));
        }
    }
}

} // namespace Pellarvine
