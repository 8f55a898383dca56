// SPDX-License-Identifier: MIT
#include "Text/NSAttributes.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace NS {

const QString FontAttributeName = u"NSFont"_s;
const QString ForegroundColorAttributeName = u"NSColor"_s;
const QString BackgroundColorAttributeName = u"NSBackgroundColor"_s;
const QString ParagraphStyleAttributeName = u"NSParagraphStyle"_s;
const QString UnderlineStyleAttributeName = u"NSUnderline"_s;
const QString StrikethroughStyleAttributeName = u"NSStrikethrough"_s;
const QString KernAttributeName = u"NSKern"_s;
const QString LinkAttributeName = u"NSLink"_s;

namespace {

// A set has few attributes, so a linear search is faster than a binary one.
const Attributes::Attribute *placeOf(const QString &key, const Attributes &attributes)
{
    return std::find_if(attributes.begin(), attributes.end(),
                        [&](const auto &attribute) { return attribute.first >= key; });
}

} // namespace

Attributes::Attributes(std::initializer_list<Attribute> attributes)
{
    for (const auto &[key, value] : attributes)
        insert(key, value);
}

bool Attributes::contains(const QString &key) const
{
    const auto *const place = placeOf(key, *this);
    return place != end() && place->first == key;
}

QVariant Attributes::value(const QString &key) const
{
    const auto *const place = placeOf(key, *this);
    return place != end() && place->first == key ? place->second : QVariant();
}

void Attributes::insert(const QString &key, const QVariant &value)
{
    const auto *const place = placeOf(key, *this);
    const qsizetype index = place - begin();
    const bool isKnown = place != end() && place->first == key;
    if (d)
        d.detach();
    else
        d = new Data;
    if (isKnown)
        d->list[index].second = value;
    else
        d->list.insert(index, { key, value });
}

void Attributes::insert(const Attributes &others)
{
    if (isEmpty()) {
        *this = others;
        return;
    }
    for (const auto &[key, value] : others)
        insert(key, value);
}

void Attributes::remove(const QString &key)
{
    if (!contains(key))
        return;
    const qsizetype index = placeOf(key, *this) - begin();
    if (size() == 1) {
        d.reset();
        return;
    }
    d.detach();
    d->list.remove(index);
}

bool Attributes::hasEqualValues(const Attributes &other) const
{
    return std::equal(begin(), end(), other.begin(), other.end());
}

} // namespace NS
