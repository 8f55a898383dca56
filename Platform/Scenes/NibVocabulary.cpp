// SPDX-License-Identifier: MIT
#include "Scenes/NibVocabulary.h"

#include <QAbstractButton>
#include <QBrush>
#include <QCursor>
#include <QDateTime>
#include <QDockWidget>
#include <QFormLayout>
#include <QGridLayout>
#include <QHash>
#include <QIcon>
#include <QLocale>
#include <QMainWindow>
#include <QPalette>
#include <QStackedLayout>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QToolBox>
#include <QTreeView>
#include <QUrl>
#include <QWizardPage>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

using Vocabulary = QHash<QString, NibValueKinds>;

std::optional<NibValueKinds> look(const Vocabulary &vocabulary, const QString &name)
{
    const auto found = vocabulary.constFind(name);
    return found == vocabulary.cend() ? std::nullopt : std::optional(*found);
}

NibValueKinds of(const QString &kind)
{
    return { { kind }, {} };
}

template <typename Enum>
NibValueKinds keysOf()
{
    return { { u"enum"_s, u"set"_s, u"number"_s }, QMetaEnum::fromType<Enum>() };
}

// Attributes of the headers of a table or a tree.
std::optional<NibValueKinds> headerAttribute(const QString &name)
{
    static const Vocabulary vocabulary {
        { u"Visible"_s, of(u"bool"_s) },
        { u"CascadingSectionResizes"_s, of(u"bool"_s) },
        { u"HighlightSections"_s, of(u"bool"_s) },
        { u"ShowSortIndicator"_s, of(u"bool"_s) },
        { u"StretchLastSection"_s, of(u"bool"_s) },
        { u"MinimumSectionSize"_s, of(u"number"_s) },
        { u"DefaultSectionSize"_s, of(u"number"_s) },
    };
    return look(vocabulary, name);
}

// Attributes of a page of a QTabWidget or a QToolBox.
std::optional<NibValueKinds> pageAttribute(const QObject *parent, const QString &name)
{
    static const Vocabulary tabs {
        { u"title"_s, of(u"string"_s) },
        { u"icon"_s, of(u"iconset"_s) },
        { u"toolTip"_s, of(u"string"_s) },
        { u"whatsThis"_s, of(u"string"_s) },
    };
    static const Vocabulary boxes {
        { u"label"_s, of(u"string"_s) },
        { u"icon"_s, of(u"iconset"_s) },
        { u"toolTip"_s, of(u"string"_s) },
    };
    if (qobject_cast<const QTabWidget *>(parent))
        return look(tabs, name);
    return qobject_cast<const QToolBox *>(parent) ? look(boxes, name) : std::nullopt;
}

} // namespace

std::optional<NibValueKinds> spacerProperty(const QString &name)
{
    static const Vocabulary vocabulary {
        { u"orientation"_s, keysOf<Qt::Orientation>() },
        { u"sizeType"_s, keysOf<QSizePolicy::Policy>() },
        { u"sizeHint"_s, of(u"size"_s) },
    };
    return look(vocabulary, name);
}

std::optional<NibValueKinds> itemProperty(const QString &name)
{
    static const NibValueKinds brush { { u"brush"_s, u"color"_s }, {} };
    static const Vocabulary vocabulary {
        { u"text"_s, of(u"string"_s) },
        { u"toolTip"_s, of(u"string"_s) },
        { u"statusTip"_s, of(u"string"_s) },
        { u"whatsThis"_s, of(u"string"_s) },
        { u"icon"_s, of(u"iconset"_s) },
        { u"font"_s, of(u"font"_s) },
        { u"background"_s, brush },
        { u"foreground"_s, brush },
        { u"textAlignment"_s, keysOf<Qt::Alignment>() },
        { u"flags"_s, keysOf<Qt::ItemFlags>() },
        { u"checkState"_s, keysOf<Qt::CheckState>() },
    };
    return look(vocabulary, name);
}

std::optional<NibValueKinds> layoutProperty(const QString &name)
{
    static const Vocabulary vocabulary {
        { u"margin"_s, of(u"number"_s) },          { u"leftMargin"_s, of(u"number"_s) },
        { u"topMargin"_s, of(u"number"_s) },       { u"rightMargin"_s, of(u"number"_s) },
        { u"bottomMargin"_s, of(u"number"_s) },    { u"horizontalSpacing"_s, of(u"number"_s) },
        { u"verticalSpacing"_s, of(u"number"_s) },
    };
    return look(vocabulary, name);
}

std::optional<NibValueKinds> attributeOf(const QObject *object, const QObject *parent,
                                         const QString &name)
{
    const auto behind = [&](QLatin1StringView prefix) {
        return name.startsWith(prefix) ? headerAttribute(name.sliced(prefix.size())) : std::nullopt;
    };
    if (auto found = pageAttribute(parent, name))
        return found;
    if (name == "buttonGroup"_L1 && qobject_cast<const QAbstractButton *>(object))
        return of(u"string"_s);
    if (name == "pageId"_L1 && qobject_cast<const QWizardPage *>(object))
        return of(u"string"_s);
    if (name == "toolBarArea"_L1 && qobject_cast<const QToolBar *>(object))
        return keysOf<Qt::ToolBarArea>();
    if (name == "toolBarBreak"_L1 && qobject_cast<const QToolBar *>(object))
        return of(u"bool"_s);
    if (name == "dockWidgetArea"_L1 && qobject_cast<const QDockWidget *>(object))
        return keysOf<Qt::DockWidgetArea>();
    if (qobject_cast<const QTreeView *>(object))
        return behind("header"_L1);
    if (!qobject_cast<const QTableView *>(object))
        return std::nullopt;
    const auto found = behind("horizontalHeader"_L1);
    return found ? found : behind("verticalHeader"_L1);
}

const QMetaObject *layoutMetaObject(const QString &className)
{
    for (const QMetaObject *const known :
         { &QVBoxLayout::staticMetaObject, &QHBoxLayout::staticMetaObject,
           &QGridLayout::staticMetaObject, &QFormLayout::staticMetaObject,
           &QStackedLayout::staticMetaObject }) {
        if (className == QLatin1StringView(known->className()))
            return known;
    }
    return nullptr;
}

QMetaType valueType(const QString &kind)
{
    static const QHash<QString, QMetaType> types {
        { u"bool"_s, QMetaType::fromType<bool>() },
        { u"number"_s, QMetaType::fromType<int>() },
        { u"uint"_s, QMetaType::fromType<uint>() },
        { u"longlong"_s, QMetaType::fromType<qlonglong>() },
        { u"ulonglong"_s, QMetaType::fromType<qulonglong>() },
        { u"double"_s, QMetaType::fromType<double>() },
        { u"float"_s, QMetaType::fromType<float>() },
        { u"string"_s, QMetaType::fromType<QString>() },
        { u"cstring"_s, QMetaType::fromType<QByteArray>() },
        { u"stringlist"_s, QMetaType::fromType<QStringList>() },
        { u"rect"_s, QMetaType::fromType<QRect>() },
        { u"rectf"_s, QMetaType::fromType<QRectF>() },
        { u"point"_s, QMetaType::fromType<QPoint>() },
        { u"pointf"_s, QMetaType::fromType<QPointF>() },
        { u"size"_s, QMetaType::fromType<QSize>() },
        { u"sizef"_s, QMetaType::fromType<QSizeF>() },
        { u"sizepolicy"_s, QMetaType::fromType<QSizePolicy>() },
        { u"font"_s, QMetaType::fromType<QFont>() },
        { u"color"_s, QMetaType::fromType<QColor>() },
        { u"brush"_s, QMetaType::fromType<QBrush>() },
        { u"palette"_s, QMetaType::fromType<QPalette>() },
        { u"cursor"_s, QMetaType::fromType<QCursor>() },
        { u"cursorShape"_s, QMetaType::fromType<QCursor>() },
        { u"iconset"_s, QMetaType::fromType<QIcon>() },
        { u"pixmap"_s, QMetaType::fromType<QPixmap>() },
        { u"locale"_s, QMetaType::fromType<QLocale>() },
        { u"url"_s, QMetaType::fromType<QUrl>() },
        { u"date"_s, QMetaType::fromType<QDate>() },
        { u"time"_s, QMetaType::fromType<QTime>() },
        { u"datetime"_s, QMetaType::fromType<QDateTime>() },
        { u"char"_s, QMetaType::fromType<QChar>() },
    };
    return types.value(kind);
}

std::optional<int> valueOfKeys(const QMetaEnum &keys, const QString &text)
{
    bool isValid = false;
    const int value = keys.keysToValue(text.toLatin1().constData(), &isValid);
    if (isValid)
        return value;
    QStringList names = text.split(u'|', Qt::SkipEmptyParts);
    for (QString &name : names)
        name = name.section(u"::"_s, -1).trimmed();
    if (names.isEmpty())
        return keys.isFlag() ? std::optional(0) : std::nullopt;
    const int unscoped = keys.keysToValue(names.join(u'|').toUtf8().constData(), &isValid);
    return isValid ? std::optional(unscoped) : std::nullopt;
}

} // namespace Pellarvine::detail
