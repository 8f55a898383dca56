// SPDX-License-Identifier: MIT
#include "KeyValue/NSObjectListModel.h"

#include "Base/Failure.h"
#include "KeyValue/BindingValue.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/KeyValueObserving.h"

#include <QSequentialIterable>

#include <algorithm>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

struct ObjectListModel::Private : KeyValueObserver
{
    // Tells of the changes of one object's properties.
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
    };

    ObjectListModel *q = nullptr;
    ObjectReference model { static_cast<QObject *>(nullptr) };
    QString keyPath;
    QList<Column> columns;
    QVariantList items;
    std::map<const QObject *, std::unique_ptr<Row>> rows;
    bool isMade = false;

    void observeValue(const QString &, QObject *, const KeyValueChange *) override { follow(); }

    QVariant list() const
    {
        QObject *const object = model.get();
        return object ? valueForKeyPath(object, keyPath) : QVariant();
    }

    static QVariant part(const QVariant &item, const QString &key)
    {
        if (key.isEmpty())
            return item;
        if (const auto held = detail::object(item))
            return *held ? valueForKeyPath(*held, key) : QVariant();
        return detail::withoutNull(detail::valueInside(item, key, key));
    }

    // Takes the list as it is now, in steps that views can follow.
    void follow()
    {
        const QVariantList wanted = list().toList();
        const bool isOfValues =
                std::none_of(wanted.begin(), wanted.end(),
                             [](const QVariant &item) { return detail::object(item).has_value(); });
        if (isOfValues && wanted.size() == items.size())
            replaceValues(wanted);
        else
            moveTo(wanted);
    }

    void replaceValues(const QVariantList &wanted)
    {
        for (int i = 0; i < wanted.size(); ++i) {
            if (isEqual(items[i], wanted[i]))
                continue;
            items[i] = wanted[i];
            Q_EMIT q->dataChanged(q->index(i, 0), q->index(i, int(columns.size()) - 1));
        }
    }

    void moveTo(const QVariantList &wanted)
    {
        qsizetype end = wanted.size(); // of what has to be looked at: the rest is equal
        qsizetype oldEnd = items.size();
        while (end > 0 && oldEnd > 0 && isEqual(items[oldEnd - 1], wanted[end - 1])) {
            --end;
            --oldEnd;
        }
        const auto find = [](const QVariantList &list, const QVariant &item, qsizetype from,
                             qsizetype to) {
            while (from < to && !isEqual(list[from], item))
                ++from;
            return from < to ? from : -1;
        };
        for (qsizetype i = 0; i < end; ++i) {
            while (i < oldEnd && find(wanted, items[i], i, end) < 0) {
                remove(i);
                --oldEnd;
            }
            if (i < oldEnd && isEqual(items[i], wanted[i]))
                continue;
            const qsizetype from = find(items, wanted[i], i, oldEnd);
            if (from >= 0) {
                q->beginMoveRows({}, int(from), int(from), {}, int(i));
                items.move(from, i);
                q->endMoveRows();
            } else {
                insert(i, wanted[i]);
                ++oldEnd;
            }
        }
        while (oldEnd > end)
            remove(--oldEnd);
    }

    void insert(qsizetype row, const QVariant &item)
    {
        if (const auto held = detail::object(item); held && *held)
            watch(*held);
        q->beginInsertRows({}, int(row), int(row));
        items.insert(row, item);
        q->endInsertRows();
    }

    void remove(qsizetype row)
    {
        q->beginRemoveRows({}, int(row), int(row));
        const QVariant item = items.takeAt(row);
        q->endRemoveRows();
        if (const auto held = detail::object(item); held && !contains(*held))
            rows.erase(*held);
    }

    bool contains(const QObject *object) const
    {
        return std::any_of(items.begin(), items.end(), [object](const QVariant &item) {
            return detail::object(item) == object;
        });
    }

    void watch(QObject *object)
    {
        auto &row = rows[object];
        if (row)
            return;
        row = std::make_unique<Row>(this, object);
        row->death = QObject::connect(object, &QObject::destroyed, q,
                                      [this](QObject *gone) { forget(gone); });
        for (const Column &column : std::as_const(columns)) {
            try {
                if (!column.keyPath.isEmpty())
                    addObserver(object, row.get(), column.keyPath,
                                KeyValueObservingOptions::newValue);
            } catch (const KeyValueException &error) {
                // A property that never reports a change is shown as it was.
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
        rows.erase(gone);
        for (qsizetype i = items.size() - 1; i >= 0; --i) {
            if (detail::object(items[i]) == gone)
                remove(i);
        }
    }

    void changed(const QObject *object, const QString &path) const
    {
        for (int row = 0; row < items.size(); ++row) {
            if (detail::object(items[row]) != object)
                continue;
            for (int column = 0; column < columns.size(); ++column) {
                const QModelIndex index = q->index(row, column);
                if (columns[column].keyPath == path)
                    Q_EMIT q->dataChanged(index, index);
            }
        }
    }

    // A gadget, a map or a plain value goes back into a copy of the list.
    void writeValue(int row, const QString &key, const QVariant &value) const
    {
        QObject holder;
        holder.setProperty("item", items[row]);
        setValueForKeyPath(&holder, key.isEmpty() ? u"item"_s : u"item."_s + key, value);
        QVariant copy = list();
        copy.view<QSequentialIterable>().set(row, holder.property("item"));
        setValueForKeyPath(model.get(), keyPath, copy);
    }
};

ObjectListModel::ObjectListModel(const ObjectReference &observed, const QString &keyPath,
                                 const QList<Column> &columns, QObject *parent)
    : QAbstractTableModel(parent)
    , d(std::make_unique<Private>())
{
    d->q = this;
    d->model = observed;
    d->keyPath = keyPath;
    d->columns = columns;
    addObserver(observed.get(), d.get(), keyPath, KeyValueObservingOptions::newValueAndInitial);
    for (const QVariant &item : std::as_const(d->items)) {
        for (const Column &column : columns)
            Private::part(item, column.keyPath); // throws for a key that is not there
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
        return {}; // it was warned of as the item came
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
        return false; // the view's way of refusing an edit
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
                     : d->model.get() && detail::isWritable(d->model.get(), d->keyPath);
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
