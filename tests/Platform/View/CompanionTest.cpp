// SPDX-License-Identifier: MIT
#include "View/Companion.h"

#include <QObject>
#include <QWidget>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

using Pellarvine::detail::CompanionEntry;
using Pellarvine::detail::companionOf;

namespace {

struct AtEnd
{
    ~AtEnd() { call(); }
    std::function<void()> call;
};

class Badge : public QObject
{
public:
    explicit Badge(
            QWidget *widget, std::function<void()> atEnd = [] {})
        : QObject(widget)
        , m_atEnd { std::move(atEnd) }
        , m_entry(widget, this)
    { }

private:
    AtEnd m_atEnd;
    CompanionEntry<Badge> m_entry;
};

} // namespace

TEST(Companion, belongs_to_one_widget_until_either_is_gone)
{
    QWidget first;
    auto second = std::make_unique<QWidget>();
    const QWidget *const address = second.get();
    auto *const badge = new Badge(&first);
    new Badge(second.get());
    EXPECT_EQ(companionOf<Badge>(&first), badge);
    EXPECT_NE(companionOf<Badge>(second.get()), badge);
    delete badge;
    EXPECT_FALSE(companionOf<Badge>(&first));
    EXPECT_TRUE(companionOf<Badge>(second.get()));
    second.reset();
    EXPECT_FALSE(companionOf<Badge>(address));
}

TEST(Companion, is_not_found_while_its_members_are_destroyed)
{
    QWidget widget;
    const Badge *found = nullptr;
    auto *const badge = new Badge(&widget, [&] { found = companionOf<Badge>(&widget); });
    found = badge;
    delete badge;
    EXPECT_FALSE(found);
}
