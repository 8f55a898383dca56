// SPDX-License-Identifier: MIT
#include "TemporaryFolder.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Shared/Settings.h>

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

struct SettingsFile : ::testing::Test
{
    std::unique_ptr<QSettings> storage() const
    {
        return std::make_unique<QSettings>(folder.filePath(u"app.ini"_s), QSettings::IniFormat);
    }
    std::unique_ptr<Settings> settings() const
    {
        return std::make_unique<Settings>(storage(), u"network"_s,
                                          QVariantMap { { u"host"_s, u"localhost"_s },
                                                        { u"port"_s, 80 },
                                                        { u"names"_s, QStringList { u"a"_s } },
                                                        { u"ratio"_s, 0.5 },
                                                        { u"isSecure"_s, false } });
    }
    QVariant stored(const QString &key) const { return storage()->value(u"network/"_s + key); }

    TemporaryFolder folder;
};

} // namespace

TEST_F(SettingsFile, properties_have_the_types_of_their_defaults_and_return_from_the_file)
{
    const auto first = settings();
    EXPECT_EQ(first->property("port"), 80);
    EXPECT_FALSE(first->isModified());
    const std::pair<const char *, QVariant> rows[] = { { "host", u"example.org, \"x\""_s },
                                                       { "port", 443 },
                                                       { "names", QStringList { u"b"_s } },
                                                       { "ratio", 0.25 },
                                                       { "isSecure", true } };
    for (const auto &[key, value] : rows)
        NS::setValueForKeyPath(first.get(), QString::fromUtf8(key), value);
    EXPECT_TRUE(first->isModified());
    EXPECT_FALSE(stored(u"port"_s).isValid());
    EXPECT_TRUE(first->apply());
    EXPECT_FALSE(first->isModified());
    const auto second = settings();
    for (const auto &[key, value] : rows)
        EXPECT_EQ(second->property(key), value) << key;

    // Text is converted or refused.
    NS::setValueForKeyPath(second.get(), u"port"_s, u"8080"_s);
    EXPECT_EQ(second->property("port"), QVariant(8080));
    EXPECT_THROW(NS::setValueForKeyPath(second.get(), u"port"_s, u"80x"_s), NS::KeyValueException);
    EXPECT_EQ(second->property("port"), QVariant(8080));
}

TEST_F(SettingsFile, reset_discards_edits_and_restoring_defaults_is_an_edit_too)
{
    const auto object = settings();
    QSignalSpy modified(object.get(), &Settings::modifiedChanged);
    QSignalSpy allDefault(object.get(), &Settings::allDefaultChanged);
    object->setProperty("port", 443);
    object->setProperty("host", u"example.org"_s);
    object->reset();
    EXPECT_EQ(object->property("port"), 80);
    EXPECT_EQ(modified.size(), 2);
    EXPECT_EQ(allDefault.size(), 2);
    object->setProperty("port", 443);
    EXPECT_TRUE(object->apply());
    object->restoreDefaults();
    EXPECT_TRUE(object->isModified());
    EXPECT_TRUE(object->isAllDefault());
    EXPECT_EQ(stored(u"port"_s).toInt(), 443);
    EXPECT_TRUE(object->apply());
    EXPECT_FALSE(stored(u"port"_s).isValid()); // defaults are not stored
}

TEST_F(SettingsFile, changes_of_the_file_are_followed_except_for_what_is_being_edited)
{
    folder.file(u"app.ini"_s, "[network]\nport=81\n");
    const auto object = settings();
    EXPECT_EQ(object->property("port"), 81);
    object->setProperty("host", u"mine"_s);
    for (const int port : { 82, 83 }) { // also after the file has been replaced
        const auto other = storage();
        other->setValue(u"network/port"_s, port);
        other->setValue(u"network/host"_s, u"theirs"_s);
        other->sync();
        EXPECT_TRUE(QTest::qWaitFor([&] { return object->property("port") == port; }));
    }
    EXPECT_EQ(object->property("host"), u"mine"_s);
    object->reset();
    EXPECT_EQ(object->property("host"), u"theirs"_s);
}

TEST_F(SettingsFile, an_edit_that_waits_in_its_control_counts_as_an_edit)
{
    folder.file(u"app.ini"_s, "[network]\nport=81\n");
    const auto object = settings();
    QLineEdit host;
    QLineEdit port;
    NS::bind(&host, u"text"_s, object.get(), u"host"_s,
             { .commit = NS::BindingOptions::whenEditingFinishes });
    NS::BindingOptions options;
    options.onInvalid = [](const QString &) {
    };
    NS::bind(&port, u"text"_s, object.get(), u"port"_s, options);
    const auto change = [this](const QString &newHost, int newPort) {
        const auto other = storage();
        other->setValue(u"network/host"_s, newHost);
        other->setValue(u"network/port"_s, newPort);
    };

    host.setText(u"mine"_s);
    EXPECT_TRUE(object->isModified());
    EXPECT_FALSE(object->isAllDefault());
    change(u"theirs"_s, 82);
    EXPECT_TRUE(QTest::qWaitFor([&] { return port.text() == u"82"_s; }));
    EXPECT_EQ(host.text(), u"mine"_s);
    object->reset();
    EXPECT_EQ(host.text(), u"theirs"_s);
    EXPECT_FALSE(object->isModified());

    // After an edit is discarded, the field shows the change of the file.
    host.setText(u"mine"_s);
    change(u"new"_s, 83);
    EXPECT_TRUE(QTest::qWaitFor([&] { return port.text() == u"83"_s; }));
    NS::unbind(&host, u"text"_s);
    EXPECT_EQ(object->property("host"), u"new"_s);
    EXPECT_FALSE(object->isModified());

    // So does a refused edit.
    port.setText(u"none"_s);
    EXPECT_TRUE(object->isModified());
    object->reset();
    EXPECT_EQ(port.text(), u"83"_s);
    EXPECT_FALSE(port.property("invalid").isValid());
    object->setProperty("port", 80);
    port.setText(u"none"_s);
    object->restoreDefaults();
    EXPECT_EQ(port.text(), u"80"_s);
}

TEST_F(SettingsFile, names_and_defaults_that_no_property_can_have_are_refused)
{
    for (const char *const name :
         { "modified", "allDefault", "appliesAtOnce", "objectName", "keepsPropertyTypes", "" })
        EXPECT_THROW(Settings(storage(), {}, { { QString::fromUtf8(name), 1 } }),
                     std::invalid_argument)
                << name;
    EXPECT_THROW(Settings(storage(), {}, { { u"port"_s, QVariant() } }), std::invalid_argument);
}

TEST_F(SettingsFile, a_property_keeps_the_type_of_its_default)
{
    const auto object = settings();
    QSpinBox port;
    port.setMaximum(65535);
    NS::bind(&port, u"value"_s, object.get(), u"port"_s);
    object->setProperty("port", u"8080"_s);
    EXPECT_EQ(object->property("port"), QVariant(8080));
    ::testing::internal::CaptureStdout();
    object->setProperty("port", u"many"_s);
    EXPECT_THAT(
            ::testing::internal::GetCapturedStdout(),
            ::testing::HasSubstr("network/port keeps its value: \"many\" does not fit into int"));
    EXPECT_EQ(object->property("port"), QVariant(8080));
    EXPECT_EQ(port.value(), 8080);
    object->setProperty("port", QVariant());
    EXPECT_EQ(object->property("port"), QVariant(0)); // null becomes 0, as in key-value coding
    EXPECT_EQ(port.value(), 0);
    object->restoreDefaults();
    EXPECT_EQ(object->property("port"), QVariant(80));
}

TEST_F(SettingsFile, an_enumeration_is_chosen_in_a_combo_box_by_the_data_of_its_items)
{
    const QVariantMap defaults { { u"lines"_s, QVariant::fromValue(Qt::Horizontal) } };
    Settings object(storage(), {}, defaults);
    QComboBox box;
    box.addItem(u"Vertical"_s, QVariant::fromValue(Qt::Vertical));
    box.addItem(u"Horizontal"_s, QVariant::fromValue(Qt::Horizontal));
    NS::BindingOptions options;
    options.transformer = [&](const QVariant &value) {
        return box.findData(value);
    };
    options.reverseTransformer = [&](const QVariant &index) {
        return box.itemData(index.toInt());
    };
    NS::bind(&box, u"currentIndex"_s, &object, u"lines"_s, options);
    EXPECT_EQ(box.currentIndex(), 1);
    box.setCurrentIndex(0);
    EXPECT_EQ(object.property("lines"), QVariant::fromValue(Qt::Vertical));
    EXPECT_TRUE(object.apply());
    EXPECT_EQ(Settings(storage(), {}, defaults).property("lines"),
              QVariant::fromValue(Qt::Vertical));
}

TEST_F(SettingsFile, a_value_of_another_type_is_a_warning_and_the_default)
{
    folder.file(u"app.ini"_s, "[network]\nport=many\nratio=1\n");
    ::testing::internal::CaptureStdout();
    const auto object = settings();
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                ::testing::HasSubstr("the setting network/port in "));
    EXPECT_EQ(object->property("port"), 80);
    EXPECT_EQ(object->property("ratio"), QVariant(1.0));
}

TEST_F(SettingsFile, what_applies_at_once_is_stored_at_each_change)
{
    const auto object = settings();
    object->setProperty("port", 443);
    object->setAppliesAtOnce(true);
    EXPECT_EQ(stored(u"port"_s).toInt(), 443);
    object->setProperty("port", 444);
    EXPECT_EQ(stored(u"port"_s).toInt(), 444);
    EXPECT_FALSE(object->isModified());
}

TEST_F(SettingsFile, a_file_that_cannot_be_written_leaves_the_edits)
{
    Settings object(std::make_unique<QSettings>(u"/proc/nowhere/app.ini"_s, QSettings::IniFormat),
                    {}, { { u"port"_s, 80 } });
    object.setProperty("port", 81);
    ::testing::internal::CaptureStdout();
    EXPECT_FALSE(object.apply());
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), ::testing::HasSubstr("/proc/nowhere"));
    EXPECT_TRUE(object.isModified());

    // The application has no organization.
    Settings nobodys({}, { { u"port"_s, 80 } });
    nobodys.setProperty("port", 81);
    ::testing::internal::CaptureStdout();
    EXPECT_FALSE(nobodys.apply());
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                ::testing::HasSubstr("QCoreApplication::setOrganizationName()"));
}

TEST_F(SettingsFile, a_tree_of_widgets_is_bound_by_their_dynamic_property)
{
    const auto object = settings();
    QWidget page;
    auto *const host = new QLineEdit(&page);
    auto *const box = new QWidget(&page);
    auto *const port = new QSpinBox(box);
    port->setMaximum(65535);
    host->setProperty("setting", u"host"_s);
    port->setProperty("setting", u"port"_s);
    object->bindChildren(&page);
    EXPECT_EQ(host->text(), u"localhost"_s);
    port->setValue(443);
    EXPECT_EQ(object->property("port"), 443);
    object->restoreDefaults();
    EXPECT_EQ(port->value(), 80);
    host->setProperty("setting", u"hots"_s);
    EXPECT_THROW(object->bindChildren(&page), NS::KeyValueException);
}

} // namespace Pellarvine
