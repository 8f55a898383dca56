// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSAttributes.h>

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

namespace {

// A set has a handful of attributes, so that a walk beats a search by halves.
template <typename Iterator>
Iterator placeOf(const QString &key, Iterator begin, Iterator end)
{
    return std::find_if(begin, end, [&](const auto &attribute) { return attribute.first >= key; });
}

} // namespace

Attributes::Attributes(std::initializer_list<Attribute> attributes)
{
    m_list.reserve(qsizetype(attributes.size()));
    for (const auto &[key, value] : attributes)
        insert(key, value);
}

bool Attributes::contains(const QString &key) const
{
    const auto place = placeOf(key, begin(), end());
    return place != end() && place->first == key;
}

QVariant Attributes::value(const QString &key) const
{
    const auto place = placeOf(key, begin(), end());
    return place != end() && place->first == key ? place->second : QVariant();
}

void Attributes::insert(const QString &key, const QVariant &value)
{
    const auto place = placeOf(key, begin(), end());
    const qsizetype index = place - begin();
    if (place != end() && place->first == key)
        m_list[index].second = value;
    else
        m_list.insert(index, { key, value });
}

void Attributes::remove(const QString &key)
{
    const auto place = placeOf(key, begin(), end());
    if (place != end() && place->first == key)
        m_list.remove(place - begin());
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

} // namespace NS
