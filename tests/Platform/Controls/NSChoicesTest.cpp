// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/NSChoices.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Platform/NSSegmentedControl.h>

#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

class Club : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<Person *> members MEMBER members NOTIFY changed)
    Q_PROPERTY(QStringList colors MEMBER colors NOTIFY changed)
    Q_PROPERTY(QList<Address> places MEMBER places NOTIFY changed)
    Q_PROPERTY(Person *chair MEMBER chair NOTIFY chairChanged)
    Q_PROPERTY(int chairAge MEMBER chairAge NOTIFY chairAgeChanged)
    Q_PROPERTY(QString color MEMBER color NOTIFY colorChanged)

public:
    QList<Person *> members;
    QStringList colors { u"red"_s, u"green"_s };
    QList<Address> places { { u"Oslo"_s, 1 }, { u"Rome"_s, 2 } };
    Person *chair = nullptr;
    int chairAge = 0;
    QString color = u"green"_s;

Q_SIGNALS:
    void changed();
    void chairChanged();
    void chairAgeChanged();
    void colorChanged();
};

QStringList titles(const QComboBox &box)
{
    QStringList titles;
    for (int i = 0; i < box.count(); ++i)
        titles.append(box.itemText(i));
    return titles;
}

struct Choices : ::testing::Test
{
    Choices()
    {
        ada.setAge(36);
        grace.setAge(85);
        club.members = { &ada, &grace };
    }

    Person ada { u"Ada"_s };
    Person grace { u"Grace"_s };
    Club club;
};

} // namespace

TEST_F(Choices, a_combo_box_offers_the_objects_of_a_list_and_is_bound_by_object)
{
    club.chair = &grace;
    QComboBox box;
    NS::bindChoices(&box, &club, u"members"_s, { .title = u"name"_s, .tag = u"age"_s });
    NS::bind(&box, u"selectedObject"_s, &club, u"chair"_s);
    EXPECT_EQ(titles(box), QStringList({ u"Ada"_s, u"Grace"_s }));
    EXPECT_EQ(box.currentIndex(), 1);
    EXPECT_EQ(box.property("selectedTag"), 85);
    box.setCurrentIndex(0);
    EXPECT_EQ(club.chair, &ada);
    club.setProperty("chair", QVariant::fromValue<Person *>(nullptr));
    EXPECT_EQ(box.currentIndex(), -1);
    club.setProperty("chair", QVariant::fromValue(&grace));
    EXPECT_EQ(box.currentIndex(), 1);
}

TEST_F(Choices, the_items_follow_the_list_and_its_renames_and_the_selection_its_item)
{
    QComboBox box;
    NS::SegmentedControl segments;
    club.chairAge = 36;
    for (QWidget *const control :
         { static_cast<QWidget *>(&box), static_cast<QWidget *>(&segments) }) {
        NS::bindChoices(control, &club, u"members"_s, { .title = u"name"_s, .tag = u"age"_s });
        NS::bind(control, u"selectedTag"_s, &club, u"chairAge"_s);
    }
    ada.setProperty("name", u"Lovelace"_s);
    Person emmy(u"Emmy"_s);
    emmy.setAge(53);
    club.members.prepend(&emmy);
    Q_EMIT club.changed();
    EXPECT_EQ(titles(box), QStringList({ u"Emmy"_s, u"Lovelace"_s, u"Grace"_s }));
    EXPECT_EQ(segments.labels(), titles(box));
    EXPECT_EQ(box.currentIndex(), 1);
    EXPECT_EQ(segments.selectedSegment(), 1);
    segments.setSelectedSegment(2);
    EXPECT_EQ(club.chairAge, 85);
    EXPECT_EQ(box.currentIndex(), 2);
    // If the selected item leaves the list, nothing is selected. The model keeps its value.
    club.members.removeLast();
    Q_EMIT club.changed();
    EXPECT_EQ(club.chairAge, 85);
    EXPECT_EQ(box.currentIndex(), -1);
    EXPECT_EQ(segments.selectedSegment(), -1);
    club.members.append(&grace);
    Q_EMIT club.changed();
    EXPECT_EQ(box.currentIndex(), 2);
    club.members.clear();
    Q_EMIT club.changed();
    EXPECT_EQ(box.count(), 0);
    EXPECT_EQ(club.chairAge, 85);
}

TEST_F(Choices, are_empty_and_disabled_while_an_object_on_the_path_is_null)
{
    QComboBox box;
    NS::SegmentedControl segments;
    for (QWidget *const control : QWidgetList { &box, &segments }) {
        NS::bindChoices(control, &club, u"members"_s, { .title = u"name"_s, .tag = u"age"_s });
        NS::bind(control, u"selectedTag"_s, &club, u"chair.age"_s);
        EXPECT_FALSE(control->isEnabled());
        club.setProperty("chair", QVariant::fromValue(&grace));
        EXPECT_TRUE(control->isEnabled());
        club.setProperty("chair", QVariant::fromValue<Person *>(nullptr));
        EXPECT_FALSE(control->isEnabled());
    }
    EXPECT_EQ(box.currentIndex(), -1);
    EXPECT_EQ(segments.selectedSegment(), -1);
}

TEST_F(Choices, an_item_may_be_destroyed_while_it_is_selected)
{
    auto emmy = std::make_unique<Person>(u"Emmy"_s);
    club.members.append(emmy.get());
    QComboBox box;
    NS::bindChoices(&box, &club, u"members"_s, { .title = u"name"_s });
    NS::bind(&box, u"selectedObject"_s, &club, u"chair"_s);
    box.setCurrentIndex(2);
    EXPECT_EQ(club.chair, emmy.get());
    club.chair = nullptr; // without a signal
    emmy.reset();
    EXPECT_EQ(titles(box), QStringList({ u"Ada"_s, u"Grace"_s }));
    EXPECT_EQ(box.currentIndex(), -1);
    club.members.removeLast();
    Q_EMIT club.changed();
    box.setCurrentIndex(0);
    EXPECT_EQ(club.chair, &ada);
}

TEST_F(Choices, the_control_may_be_deleted_in_its_slots)
{
    const std::function<void(QWidget *)> changes[] = {
        [](QWidget *control) { control->setProperty("selectedObject", u"green"_s); },
        [](QWidget *control) { control->setProperty("selectedTag", u"green"_s); },
        [this](QWidget *) {
            club.colors = { u"blue"_s };
            Q_EMIT club.changed();
        },
    };
    for (const auto &change : changes) {
        club.colors = { u"red"_s, u"green"_s };
        const QPointer<NS::SegmentedControl> control = new NS::SegmentedControl;
        NS::bindChoices(control, &club, u"colors"_s);
        control->setSelectedSegment(0);
        QObject::connect(control, &NS::SegmentedControl::selectionChanged, [&] { delete control; });
        change(control);
        EXPECT_FALSE(control);
    }
}

TEST_F(Choices, plain_values_and_gadgets_are_offered_too)
{
    QComboBox colors;
    NS::bindChoices(&colors, &club, u"colors"_s);
    NS::bind(&colors, u"selectedTag"_s, &club, u"color"_s);
    EXPECT_EQ(colors.currentText(), u"green"_s);
    colors.setCurrentIndex(0);
    EXPECT_EQ(club.color, u"red"_s);

    QComboBox places;
    NS::bindChoices(&places, &club, u"places"_s, { .title = u"city"_s, .tag = u"storey"_s });
    EXPECT_EQ(titles(places), QStringList({ u"Oslo"_s, u"Rome"_s }));
    EXPECT_EQ(places.currentIndex(), -1);
    places.setProperty("selectedTag", 2);
    EXPECT_EQ(places.currentIndex(), 1);
}

TEST_F(Choices, an_ampersand_in_an_item_marks_no_shortcut)
{
    club.colors = { u"B&W"_s };
    NS::SegmentedControl colors;
    NS::bindChoices(&colors, &club, u"colors"_s);
    EXPECT_EQ(colors.labels(), QStringList(u"B&&W"_s)); // the control's spelling of "B&W"
}

TEST_F(Choices, what_cannot_be_offered_is_an_error)
{
    QComboBox box;
    QLabel label;
    EXPECT_THROW(NS::bindChoices(&label, &club, u"colors"_s), std::invalid_argument);
    EXPECT_THROW(NS::bindChoices(&box, &club, u"colours"_s), NS::KeyValueException);
    EXPECT_THROW(NS::bindChoices(&box, &club, u"members"_s, { .title = u"nmae"_s }),
                 NS::KeyValueException);
}

#include "NSChoicesTest.moc"
