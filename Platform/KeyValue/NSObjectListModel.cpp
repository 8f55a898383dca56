// SPDX-License-Identifier: MIT
#include "KeyValue/NSObjectListModel.h"

#include "Base/Failure.h"
#include "KeyValue/BindingValue.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/KeyValueObserving.h"
#include "KeyValue/KeyValuePath.h"

#include <QScopeGuard>
#include <QSequentialIterable>

#include <algorithm>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

struct ObjectListModel::Private : KeyValueObserver
{
    // Observes the properties of one object.
    struct Row : KeyValueObserver
    {
        Row(Private *owner, QObject *observed)
            : d(owner)
            , object(observed)
        { }
        ~Row() override { QObject::disconnect(death); }
        void observeValue(const QString &changedKeyPath, QObject *, const KeyValueChange *) override
        {
            d->changed(object, changedKeyPath);
        }

        Private *d;
        QObject *object;
        QMetaObject::Connection death;
        int uses = 1; // how often the object is in the list
    };
    using Keys = QList<QObject *>;

    ObjectListModel *q = nullptr;
    ObjectReference model { static_cast<QObject *>(nullptr) };
    detail::Registration *source = nullptr; // to the list; the base class owns it
    QList<Column> columns;
    QVariantList items;
    Keys keys; // the object of each item; null for other items
    std::map<const QObject *, std::unique_ptr<Row>> rows;
    bool isMade = false;
    bool isFollowing = false;
    bool isStale = false; // the list has changed since follow() read it

    void observeValue(const QString &, QObject *, const KeyValueChange *) override { follow(); }

    static QVariant part(const QVariant &item, const QString &key)
    {
        if (key.isEmpty())
            return item;
        if (const auto held = detail::object(item))
            return *held ? valueForKeyPath(*held, key) : QVariant();
        return detail::withoutNull(detail::valueInside(item, key, key));
    }

    // Makes `items` equal to the list. If the list changes while views are told of a step, the rest
    // of the steps is worked out anew.
    void follow()
    {
        isStale = true;
        if (isFollowing)
            return;
        isFollowing = true;
        const auto leave = qScopeGuard([this] { isFollowing = false; });
        while (isStale) {
            isStale = false;
            const QVariantList wanted = source->value().toList();
            const bool isOfValues =
                    std::none_of(wanted.begin(), wanted.end(), [](const QVariant &item) {
                        return detail::object(item).has_value();
                    });
            if (isOfValues && wanted.size() == items.size())
                replaceValues(wanted);
            else
                moveTo(wanted);
        }
    }

    void replaceValues(const QVariantList &wanted)
    {
        for (int i = 0; i < wanted.size() && !isStale; ++i) {
            if (isEqual(items[i], wanted[i]))
                continue;
            items[i] = wanted[i];
            Q_EMIT q->dataChanged(q->index(i, 0), q->index(i, int(columns.size()) - 1));
        }
    }

    // Two objects are never the same, even if isEqual() says that they are equal: each has a row.
    static bool isSame(const QVariant &one, const QObject *oneKey, const QVariant &other,
                       const QObject *otherKey)
    {
        return oneKey || otherKey ? oneKey == otherKey : isEqual(one, other);
    }

    // The first index of `item` in list[from], …, list[to - 1]. -1 if it is not there. `listKeys`
    // and `key` are the objects of the items.
    static qsizetype find(const QVariantList &list, const Keys &listKeys, const QVariant &item,
                          const QObject *key, qsizetype from, qsizetype to)
    {
        if (key) {
            const auto last = listKeys.begin() + to;
            const auto found = std::find(listKeys.begin() + from, last, key);
            return found == last ? -1 : found - listKeys.begin();
        }
        while (from < to && !isSame(list[from], listKeys[from], item, key))
            ++from;
        return from < to ? from : -1;
    }

    // By single insertions, removals and moves, which views follow.
    void moveTo(const QVariantList &wanted)
    {
        Keys wantedKeys;
        wantedKeys.reserve(wanted.size());
        for (const QVariant &item : wanted)
            wantedKeys.append(detail::object(item).value_or(nullptr));
        const auto isThere = [&](qsizetype row, qsizetype i) {
            return isSame(items[row], keys[row], wanted[i], wantedKeys[i]);
        };
        qsizetype end = wanted.size(); // the items from here on are equal in both lists
        qsizetype oldEnd = items.size();
        while (end > 0 && oldEnd > 0 && isThere(oldEnd - 1, end - 1)) {
            --end;
            --oldEnd;
        }
        for (qsizetype i = 0; i < end && !isStale; ++i) {
            qsizetype next = i; // the next item that stays
            while (next < oldEnd && find(wanted, wantedKeys, items[next], keys[next], i, end) < 0)
                ++next;
            remove(i, next - i);
            if (isStale)
                return;
            oldEnd -= next - i;
            if (i < oldEnd && isThere(i, i))
                continue;
            const auto place = [&](qsizetype of) {
                return find(items, keys, wanted[of], wantedKeys[of], i, oldEnd);
            };
            const qsizetype from = place(i);
            if (from >= 0) {
                q->beginMoveRows({}, int(from), int(from), {}, int(i));
                items.move(from, i);
                keys.move(from, i);
                q->endMoveRows();
                continue;
            }
            qsizetype newEnd = i + 1;
            while (newEnd < end && place(newEnd) < 0)
                ++newEnd;
            insert(i, wanted.sliced(i, newEnd - i), wantedKeys.sliced(i, newEnd - i));
            oldEnd += newEnd - i;
            i = newEnd - 1;
        }
        if (!isStale)
            remove(end, oldEnd - end);
    }

    void insert(qsizetype row, const QVariantList &added, const Keys &addedKeys)
    {
        for (QObject *const key : addedKeys) {
            if (key)
                watch(key);
        }
        q->beginInsertRows({}, int(row), int(row + added.size() - 1));
        items.insert(row, added.size(), {});
        std::copy(added.begin(), added.end(), items.begin() + row);
        keys.insert(row, added.size(), nullptr);
        std::copy(addedKeys.begin(), addedKeys.end(), keys.begin() + row);
        q->endInsertRows();
    }

    void remove(qsizetype row, qsizetype count)
    {
        if (count <= 0)
            return;
        q->beginRemoveRows({}, int(row), int(row + count - 1));
        const QVariantList gone = items.sliced(row, count); // may hold the last references
        const Keys goneKeys = keys.sliced(row, count);
        items.remove(row, count);
        keys.remove(row, count);
        q->endRemoveRows();
        for (const QObject *const key : goneKeys) {
            const auto found = rows.find(key);
            if (found != rows.end() && --found->second->uses == 0)
                rows.erase(found);
        }
    }

    void watch(QObject *object)
    {
        auto &row = rows[object];
        if (row) {
            ++row->uses;
            return;
        }
        row = std::make_unique<Row>(this, object);
        row->death = QObject::connect(object, &QObject::destroyed, q,
                                      [this](QObject *gone) { forget(gone); });
        for (const Column &column : std::as_const(columns)) {
            try {
                if (!column.keyPath.isEmpty())
                    addObserver(object, row.get(), column.keyPath,
                                KeyValueObservingOptions::newValue);
            } catch (const KeyValueException &error) {
                // The column shows such a property without following it.
                if (error.reason() == KeyValueException::notObservable)
                    continue;
                if (!isMade)
                    throw;
                detail::printWarning(error);
            }
        }
    }

    void forget(const QObject *gone)
    {
        isStale = true;
        rows.erase(gone);
        for (qsizetype i = keys.size() - 1; i >= 0; --i) {
            if (keys[i] == gone)
                remove(i, 1);
        }
    }

    void changed(const QObject *object, const QString &path) const
    {
        for (qsizetype row = keys.indexOf(object); row >= 0; row = keys.indexOf(object, row + 1)) {
            for (int column = 0; column < columns.size(); ++column) {
                const QModelIndex index = q->index(int(row), column);
                if (columns[column].keyPath == path)
                    Q_EMIT q->dataChanged(index, index);
            }
        }
    }

    // Writes a gadget, a map or a plain value: into a copy of the list, which replaces the list.
    void writeValue(int row, const QString &key, const QVariant &value) const
    {
        QVariant copy = source->value();
        QSequentialIterable list = copy.view<QSequentialIterable>();
        QObject holder;
        holder.setProperty("keepsPropertyTypes",
                           list.metaContainer().valueMetaType() != QMetaType::fromType<QVariant>());
        holder.setProperty("item", items[row]);
        setValueForKeyPath(&holder, key.isEmpty() ? u"item"_s : u"item."_s + key, value);
        list.set(row, holder.property("item"));
        source->setValue(copy);
    }
};

ObjectListModel::ObjectListModel(const ObjectReference &observed, const QString &keyPath,
                                 const QList<Column> &columns, QObject *parent)
    : QAbstractTableModel(parent)
    , d(std::make_unique<Private>())
{
    d->q = this;
    d->model = observed;
    d->columns = columns;
    detail::requireOneThread(this, observed.get(), keyPath);
    d->source = detail::Registration::add(observed.get(), d.get(), keyPath,
                                          KeyValueObservingOptions::newValue);
    d->follow();
    for (const QVariant &item : std::as_const(d->items)) {
        for (const Column &column : columns)
            Private::part(item, column.keyPath); // throws for a key that does not exist
    }
    d->isMade = true;
}

ObjectListModel::~ObjectListModel() = default;

QVariant ObjectListModel::item(int row) const
{
    return d->items.value(row);
}

int ObjectListModel::rowOf(const QVariant &item) const
{
    for (int row = 0; row < d->items.size(); ++row) {
        if (isEqual(d->items[row], item))
            return row;
    }
    return -1;
}

int ObjectListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->items.size());
}

int ObjectListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->columns.size());
}

QVariant ObjectListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    try {
        return Private::part(d->items[index.row()], d->columns[index.column()].keyPath);
    } catch (const KeyValueException &) {
        return {}; // the warning was printed when the item was added
    }
}

bool ObjectListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    const QString key = d->columns[index.column()].keyPath;
    try {
        if (const auto held = detail::object(d->items[index.row()]))
            setValueForKeyPath(*held, key, value);
        else
            d->writeValue(index.row(), key, value);
    } catch (const KeyValueException &) {
        return false; // the view then shows the old value
    }
    return true;
}

Qt::ItemFlags ObjectListModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid())
        return flags;
    const Column &column = d->columns[index.column()];
    const auto held = detail::object(d->items[index.row()]);
    try {
        const bool isWritable =
                held ? !column.keyPath.isEmpty() && detail::isWritable(*held, column.keyPath)
                     : d->model.get() && detail::isWritable(d->model.get(), d->source->keyPath());
        flags.setFlag(Qt::ItemIsEditable, column.isEditable && isWritable);
    } catch (const KeyValueException &) {
        flags.setFlag(Qt::ItemIsEditable, false);
    }
    return flags;
}

QVariant ObjectListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return section >= 0 && section < d->columns.size() ? d->columns[section].title : QVariant();
}

} // namespace NS
