// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QPushButton>
#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace Widgets {

class Badge : public QPushButton
{
    Q_OBJECT

public:
    explicit Badge(QWidget *parent = nullptr)
        : QPushButton(parent)
    { }
};

} // namespace Widgets

namespace Gadgets {

class Badge : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
};

} // namespace Gadgets

TEST(ClassRegistry, the_librarys_own_classes_are_known_with_and_without_namespace)
{
    for (const QString &name : { u"NS::ViewController"_s, u"ViewController"_s }) {
        const std::unique_ptr<QObject> object(NS::makeObject(name));
        EXPECT_TRUE(qobject_cast<NS::ViewController *>(object.get())) << qPrintable(name);
    }
    EXPECT_TRUE(NS::registeredClassNames().contains(u"NS::ViewController"_s));
}

TEST(ClassRegistry, a_registered_class_is_made_with_its_parent)
{
    NS::registerClass<Widgets::Badge>();
    NS::registerClass<Widgets::Badge>("Emblem");
    NS::registerClass<Widgets::Badge>();
    EXPECT_EQ(NS::registeredClassNames().count(u"Widgets::Badge"_s), 1);
    EXPECT_TRUE(NS::registeredClass(u"Badge"_s)->isWidget());

    QWidget window;
    QWidget *const badge = NS::makeObject<QWidget>(u"Badge"_s, &window);
    EXPECT_EQ(badge->parentWidget(), &window);
    EXPECT_STREQ(badge->metaObject()->className(), "Widgets::Badge");
    EXPECT_TRUE(NS::makeObject<Widgets::Badge>(u"Emblem"_s, &window));
}

TEST(ClassRegistry, names_that_are_no_class_or_another_kind_of_class_make_nothing)
{
    for (const QString &name : { u""_s, u"Nothing"_s, u"dge"_s, u"::Badge"_s, u"badge"_s })
        EXPECT_FALSE(NS::registeredClass(name)) << qPrintable(name);
    EXPECT_FALSE(NS::makeObject<QWidget>(u"ViewController"_s));
}

TEST(ClassRegistry, a_short_name_stands_for_the_class_registered_last)
{
    NS::registerClass<Widgets::Badge>();
    NS::registerClass<Gadgets::Badge>();
    EXPECT_EQ(NS::registeredClass(u"Badge"_s)->name, u"Gadgets::Badge"_s);
    EXPECT_EQ(NS::registeredClass(u"Widgets::Badge"_s)->name, u"Widgets::Badge"_s);
    NS::registerClass<Widgets::Badge>();
    EXPECT_EQ(NS::registeredClass(u"Badge"_s)->name, u"Widgets::Badge"_s);
}

#include "ClassRegistryTest.moc"
