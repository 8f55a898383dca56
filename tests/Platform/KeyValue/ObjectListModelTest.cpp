// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/KeyValueException.h>
#include <pellarvine/Platform/NSListBinding.h>
#include <pellarvine/Platform/NSObjectListModel.h>

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QListView>
#include <QListWidget>
#include <QPointer>
#include <QSignalSpy>
#include <QTableView>
#include <QTreeView>
#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

class Team : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<Person *> members MEMBER members NOTIFY changed)
    Q_PROPERTY(QList<Address> places MEMBER places NOTIFY changed)
    Q_PROPERTY(QStringList words MEMBER words NOTIFY changed)
    Q_PROPERTY(QList<int> counts MEMBER counts NOTIFY changed)

public:
    QList<Person *> members;
    QList<Address> places { { u"Oslo"_s, 1 }, { u"Rome"_s, 2 } };
    QStringList words { u"a"_s, u"b"_s };
    QList<int> counts { 1, 2 };

Q_SIGNALS:
    void changed();
};

class Twin : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE bool isEqual(QObject *) { return true; }
};

QStringList names(const QAbstractItemModel &model)
{
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row)
        names.append(model.index(row, 0).data().toString());
    return names;
}

struct ObjectList : ::testing::Test
{
    ObjectList()
    {
        for (const QString &name : { u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s })
            people.push_back(std::make_unique<Person>(name));
        team.members = { person(0), person(1), person(2) };
    }
    Person *person(std::size_t index) const { return people[index].get(); }
    void setMembers(const QList<Person *> &members)
    {
        team.members = members;
        Q_EMIT team.changed();
    }

    std::vector<std::unique_ptr<Person>> people;
    Team team;
};

} // namespace

TEST_F(ObjectList, columns_show_key_paths_and_follow_each_object)
{
    NS::ObjectListModel model(&team, u"members"_s,
                              { { u"name"_s, u"Name"_s }, { u"address.city"_s, u"City"_s } });
    const QAbstractItemModelTester tester(&model);
    EXPECT_EQ(names(model), QStringList({ u"a"_s, u"b"_s, u"c"_s }));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), u"City"_s);
    QSignalSpy spy(&model, &NS::ObjectListModel::dataChanged);
    person(1)->setProperty("name", u"Bea"_s);
    ASSERT_EQ(spy.size(), 1);
    EXPECT_EQ(spy[0][0].toModelIndex(), model.index(1, 0));
    person(2)->setProperty("address", QVariant::fromValue(Address { u"Oslo"_s, 1 }));
    EXPECT_EQ(model.index(2, 1).data(), u"Oslo"_s);
    EXPECT_EQ(spy.size(), 2);
    people[1].reset();
    EXPECT_EQ(names(model), QStringList({ u"a"_s, u"c"_s }));
    EXPECT_EQ(model.rowOf(QVariant::fromValue(person(2))), 1);
}

TEST_F(ObjectList, edits_reach_the_objects_or_the_list)
{
    NS::ObjectListModel model(
            &team, u"members"_s,
            { { u"name"_s }, { u"age"_s }, { u"initials"_s }, { u"height"_s, {}, false } });
    EXPECT_TRUE(model.setData(model.index(0, 0), u"Ada"_s));
    EXPECT_EQ(person(0)->name, u"Ada"_s);
    EXPECT_TRUE(model.setData(model.index(0, 1), u"36"_s));
    EXPECT_EQ(person(0)->age(), 36);
    EXPECT_FALSE(model.setData(model.index(0, 1), u"old"_s));
    EXPECT_FALSE(model.setData(model.index(0, 2), u"X"_s));
    EXPECT_FALSE(model.setData(model.index(0, 3), 1.7));
    EXPECT_FALSE(model.flags(model.index(0, 2)) & Qt::ItemIsEditable);

    NS::ObjectListModel places(&team, u"places"_s, { { u"city"_s }, { u"storey"_s } });
    QSignalSpy spy(&places, &NS::ObjectListModel::dataChanged);
    EXPECT_TRUE(places.setData(places.index(1, 1), 5));
    team.changed();
    EXPECT_EQ(team.places[1], (Address { u"Rome"_s, 5 }));
    EXPECT_EQ(places.index(1, 1).data(), 5);
    EXPECT_EQ(spy.size(), 1);
    NS::ObjectListModel words(&team, u"words"_s, { { {} } });
    EXPECT_TRUE(words.setData(words.index(0, 0), u"z"_s));
    EXPECT_EQ(team.words, QStringList({ u"z"_s, u"b"_s }));
    NS::ObjectListModel counts(&team, u"counts"_s, { { {} } });
    EXPECT_FALSE(counts.setData(counts.index(0, 0), u"many"_s));
    EXPECT_FALSE(counts.setData(counts.index(0, 0), 3.7));
    EXPECT_TRUE(counts.setData(counts.index(0, 0), u"3"_s));
    EXPECT_EQ(team.counts, QList<int>({ 3, 2 }));
}

TEST_F(ObjectList, the_list_may_change_and_items_may_be_destroyed_while_views_follow)
{
    NS::ObjectListModel model(&team, u"members"_s, { { u"name"_s } });
    NS::ObjectListModel words(&team, u"words"_s, { { {} } });
    const QAbstractItemModelTester testers[] { QAbstractItemModelTester(&model),
                                               QAbstractItemModelTester(&words) };
    QObject::connect(&model, &NS::ObjectListModel::rowsRemoved, &team, [&] {
        if (people[1])
            team.members.removeOne(people[1].get());
        people[1].reset();
        Q_EMIT team.changed();
    });
    setMembers({ person(1), person(3), person(2) });
    EXPECT_EQ(names(model), QStringList({ u"d"_s, u"c"_s }));
    QObject::connect(&model, &NS::ObjectListModel::rowsInserted, &team, [&] {
        if (team.members.size() > 2)
            setMembers({ person(0) });
    });
    setMembers({ person(4), person(3), person(0), person(2) });
    EXPECT_EQ(names(model), QStringList({ u"a"_s }));

    team.words = { u"a"_s, u"b"_s, u"c"_s };
    Q_EMIT team.changed();
    QObject::connect(&words, &NS::ObjectListModel::dataChanged, &team, [&] {
        team.words.resize(1);
        Q_EMIT team.changed();
    });
    team.words = { u"x"_s, u"y"_s, u"z"_s };
    Q_EMIT team.changed();
    EXPECT_EQ(names(words), QStringList({ u"x"_s }));
}

TEST_F(ObjectList, rows_come_go_and_move_as_such_so_that_a_selection_stays)
{
    NS::ObjectListModel model(&team, u"members"_s, { { u"name"_s } });
    const QAbstractItemModelTester tester(&model);
    QTableView view;
    view.setModel(&model);
    view.setCurrentIndex(model.index(1, 0));
    QSignalSpy moved(&model, &NS::ObjectListModel::rowsMoved);
    QSignalSpy inserted(&model, &NS::ObjectListModel::rowsInserted);
    QSignalSpy removed(&model, &NS::ObjectListModel::rowsRemoved);
    setMembers({ person(3), person(0), person(1), person(2) });
    EXPECT_EQ(inserted.size(), 1);
    EXPECT_EQ(view.currentIndex().row(), 2);
    setMembers({ person(1), person(3), person(0), person(2) });
    EXPECT_EQ(moved.size(), 1);
    EXPECT_EQ(view.currentIndex().row(), 0);
    setMembers({ person(1), person(2) });
    EXPECT_EQ(removed.size(), 1); // one signal for both rows
    EXPECT_EQ(moved.size() + inserted.size(), 2);
    EXPECT_EQ(view.currentIndex().data(), u"b"_s);
    // After any change, also with an object twice in the list, the model equals the list.
    std::mt19937 random(1);
    for (int turn = 0; turn < 300; ++turn) {
        QList<Person *> members;
        for (std::size_t i = random() % 7; i > 0; --i)
            members.append(person(random() % people.size()));
        setMembers(members);
        QStringList expected;
        for (const Person *const member : members)
            expected.append(member->name);
        ASSERT_EQ(names(model), expected);
    }
}

TEST_F(ObjectList, an_object_that_says_it_equals_another_has_a_row_of_its_own)
{
    Twin first;
    Twin second;
    first.setProperty("name", u"first"_s);
    second.setProperty("name", u"second"_s);
    team.setProperty("twins", QVariant::fromValue(QObjectList { &first }));
    const NS::ObjectListModel model(&team, u"twins"_s, { { u"name"_s } });
    team.setProperty("twins", QVariant::fromValue(QObjectList { &second }));
    EXPECT_EQ(names(model), QStringList { u"second"_s });
}

TEST_F(ObjectList, what_cannot_be_listed_is_an_error_at_first_and_a_warning_later)
{
    EXPECT_THROW(NS::ObjectListModel(&team, u"membres"_s, { { u"name"_s } }),
                 NS::KeyValueException);
    EXPECT_THROW(NS::ObjectListModel(&team, u"members"_s, { { u"nmae"_s } }),
                 NS::KeyValueException);
    EXPECT_THROW(NS::ObjectListModel(&team, u"places"_s, { { u"town"_s } }), NS::KeyValueException);
    team.members.clear();
    NS::ObjectListModel model(&team, u"members"_s, { { u"nmae"_s } });
    ::testing::internal::CaptureStdout();
    setMembers({ person(0) });
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), ::testing::HasSubstr("nmae"));
    EXPECT_FALSE(model.index(0, 0).data().isValid());
}

TEST_F(ObjectList, views_and_combo_boxes_are_filled_and_filled_anew)
{
    QListView list;
    QTableView table;
    QTreeView tree;
    QComboBox box;
    for (QWidget *const view : QWidgetList { &list, &table, &tree, &box }) {
        const QPointer<NS::ObjectListModel> first =
                NS::bind(view, &team, u"members"_s, { { u"name"_s, u"Name"_s }, { u"age"_s } });
        EXPECT_TRUE(first->setData(first->index(0, 1), 36));
        EXPECT_EQ(person(0)->age(), 36);
        EXPECT_THROW(NS::bind(view, &team, u"members"_s, { { u"nmae"_s } }), NS::KeyValueException);
        ASSERT_TRUE(first);
        const QPointer<NS::ObjectListModel> second =
                NS::bind(view, &team, u"members"_s, { { u"name"_s, u"Name"_s } });
        EXPECT_FALSE(first);
        EXPECT_EQ(view->findChildren<NS::ObjectListModel *>().size(), 1);
        EXPECT_LE(view->findChildren<QItemSelectionModel *>(Qt::FindDirectChildrenOnly).size(), 1);
        QAbstractItemModel *const shown =
                view == &box ? box.model() : qobject_cast<QAbstractItemView *>(view)->model();
        EXPECT_EQ(shown, second);
    }
    box.setCurrentIndex(2);
    table.setCurrentIndex(table.model()->index(2, 0));
    setMembers({ person(2), person(0), person(4) });
    EXPECT_EQ(box.currentText(), u"c"_s);
    EXPECT_EQ(table.currentIndex().data(), u"c"_s);
    EXPECT_EQ(names(*list.model()), QStringList({ u"c"_s, u"a"_s, u"e"_s }));
    person(2)->setProperty("name", u"Cleo"_s);
    EXPECT_EQ(box.currentText(), u"Cleo"_s);

    // A model that the program has made still belongs to the program.
    NS::ObjectListModel own(&team, u"members"_s, { { u"age"_s } });
    tree.setModel(&own);
    NS::bind(&tree, &team, u"places"_s, { { u"city"_s } });
    EXPECT_EQ(own.rowCount(), 3);
    EXPECT_EQ(names(*tree.model()), QStringList({ u"Oslo"_s, u"Rome"_s }));
    QListWidget widget;
    EXPECT_THROW(NS::bind(&widget, &team, u"members"_s, { { u"name"_s } }), std::invalid_argument);
}

#include "ObjectListModelTest.moc"
