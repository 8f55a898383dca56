// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QSharedData>
#include <QString>
#include <QVarLengthArray>
#include <QVariant>

#include <initializer_list>
#include <utility>

/// @file
/// Sets of attributes, and the keys that the library reads, with the types of their values. A text
/// keeps other keys too, and they are not drawn. The keys are constant: any thread may read them.

namespace NS {

/// `QFont`.
PELLARVINE_EXPORT extern const QString FontAttributeName;
/// `NS::Color`, `QColor`, or a type that converts to `QColor`.
PELLARVINE_EXPORT extern const QString ForegroundColorAttributeName;
/// As the foreground colour.
PELLARVINE_EXPORT extern const QString BackgroundColorAttributeName;
/// `NS::ParagraphStyle`. A paragraph has the style of its first character.
PELLARVINE_EXPORT extern const QString ParagraphStyleAttributeName;
/// `int`: 0 none, 1 a single line. All other numbers are drawn as a single line too.
PELLARVINE_EXPORT extern const QString UnderlineStyleAttributeName;
/// As the underline style.
PELLARVINE_EXPORT extern const QString StrikethroughStyleAttributeName;
/// `double`: space behind each character, in device-independent pixels.
PELLARVINE_EXPORT extern const QString KernAttributeName;
/// `QUrl`, or a type that converts to it: the target of a click on the text.
PELLARVINE_EXPORT extern const QString LinkAttributeName;

/// The attributes of one run of an attributed string: keys with values. Implicitly shared and
/// reentrant; a copy costs a reference count.
///
///     NS::Attributes title { { NS::FontAttributeName, font }, { NS::KernAttributeName, 1.5 } };
///     title.insert(NS::UnderlineStyleAttributeName, 1);
///     for (const auto &[key, value] : title)
///         qDebug() << key << value;
class PELLARVINE_EXPORT Attributes
{
public:
    /// A key and its value.
    using Attribute = std::pair<QString, QVariant>;

    Attributes() = default; ///< empty
    /// If a key occurs twice, the later value counts.
    Attributes(std::initializer_list<Attribute> attributes);

    bool isEmpty() const { return size() == 0; } ///< has no attributes
    qsizetype size() const { return d ? d->list.size() : 0; } ///< the number of attributes
    bool contains(const QString &key) const; ///< case matters
    /// An invalid `QVariant` if the key is absent.
    QVariant value(const QString &key) const;

    /// Sets an attribute, and replaces the value of the same key.
    void insert(const QString &key, const QVariant &value);
    /// Inserts all of `others`.
    void insert(const Attributes &others);
    /// Does nothing if the key is absent.
    void remove(const QString &key);

    /// In the order of the keys.
    const Attribute *begin() const { return d ? d->list.cbegin() : nullptr; }
    const Attribute *end() const { return d ? d->list.cend() : nullptr; } ///< behind the last

    /// Whether both are the same copy; if so, they are equal.
    bool isSharedWith(const Attributes &other) const { return d == other.d; }

    /// Same keys with equal values. A value that does not equal itself (a NaN) makes a set unequal
    /// to all but its own copies.
    friend bool operator==(const Attributes &one, const Attributes &other)
    {
        return one.isSharedWith(other) || one.hasEqualValues(other);
    }

private:
    /// @cond internal
    struct Data : QSharedData
    {
        QVarLengthArray<Attribute, 4> list; // sorted by key, no key twice
    };
    /// @endcond

    bool hasEqualValues(const Attributes &other) const;

    QExplicitlySharedDataPointer<Data> d; // null if empty
};

} // namespace NS

Q_DECLARE_TYPEINFO(NS::Attributes, Q_RELOCATABLE_TYPE);
