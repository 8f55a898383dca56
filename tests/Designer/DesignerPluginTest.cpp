// SPDX-License-Identifier: MIT
#include <QFile>
#include <QImage>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QUiLoader>
#include <QWidget>
#include <QXmlStreamReader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QList<QDesignerCustomWidgetInterface *> plugins()
{
    static QPluginLoader loader(QStringLiteral(PLUGIN));
    auto *const collection =
            qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
    EXPECT_TRUE(collection) << qPrintable(loader.errorString());
    return collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface *>();
}

// The class of each widget in the file, by its name.
QHash<QString, QString> widgetsOf(const QString &file)
{
    QFile source(file);
    EXPECT_TRUE(source.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&source);
    QHash<QString, QString> found;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"widget"_s) {
            found.insert(xml.attributes().value(u"name"_s).toString(),
                         xml.attributes().value(u"class"_s).toString());
        }
    }
    EXPECT_FALSE(xml.hasError());
    return found;
}

} // namespace

TEST(DesignerPlugin, what_it_offers_of_a_class_is_true_of_that_class)
{
    EXPECT_EQ(plugins().size(), 16);
    for (QDesignerCustomWidgetInterface *const plugin : plugins()) {
        SCOPED_TRACE(plugin->name().toStdString());
        const std::unique_ptr<QWidget> widget(plugin->createWidget(nullptr));
        EXPECT_EQ(QString::fromLatin1(widget->metaObject()->className()), plugin->name());
        const QString header = plugin->includeFile();
        EXPECT_TRUE(QFile::exists(QStringLiteral(PLUGINS "/../../include/")
                                  + header.mid(1, header.size() - 2)));
        for (const QString &text : { plugin->toolTip(), plugin->whatsThis(), plugin->group() })
            EXPECT_FALSE(text.isEmpty());
        EXPECT_FALSE(plugin->icon().availableSizes().isEmpty()) << "the widget box takes another";
        const QImage picture = plugin->icon().pixmap(22, 22).toImage();
        QImage blank(picture.size(), picture.format());
        blank.fill(Qt::transparent);
        EXPECT_NE(picture, blank);

        // The class has each property that a new widget is given.
        QXmlStreamReader xml(plugin->domXml());
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != u"property"_s)
                continue;
            const QByteArray name = xml.attributes().value(u"name"_s).toLatin1();
            const int index = widget->metaObject()->indexOfProperty(name.constData());
            ASSERT_GE(index, 0) << name.constData();
            EXPECT_TRUE(widget->metaObject()->property(index).isDesignable()) << name.constData();
        }
    }
}

TEST(DesignerPlugin, a_window_keeps_its_height_each_time_that_its_form_is_opened)
{
    for (QDesignerCustomWidgetInterface *const plugin : plugins()) {
        if (plugin->name() != u"Pellarvine::Window"_s)
            continue;
        const std::unique_ptr<QWidget> window(plugin->createWidget(nullptr));
        window->resize(800, 560);
        window->setProperty("titleBarHeight", 40);
        EXPECT_EQ(window->height(), 560);
    }
}

TEST(DesignerPlugin, ui_loader_makes_the_same_classes_with_what_the_form_sets)
{
    QUiLoader loader;
    loader.addPluginPath(QStringLiteral(PLUGINS));
    QFile file(QStringLiteral(FORM));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<QWidget> form(loader.load(&file));
    ASSERT_TRUE(form) << qPrintable(loader.errorString());

    const QHash<QString, QString> widgets = widgetsOf(QStringLiteral(FORM));
    ASSERT_EQ(widgets.size(), 15);
    for (auto entry = widgets.begin(); entry != widgets.end(); ++entry) {
        const QWidget *const made = entry.key() == form->objectName()
                                            ? form.get()
                                            : form->findChild<QWidget *>(entry.key());
        ASSERT_TRUE(made) << qPrintable(entry.key());
        EXPECT_EQ(QString::fromLatin1(made->metaObject()->className()), entry.value());
    }
    const auto value = [&form](const QString &widget, const char *property) {
        return form->findChild<QWidget *>(widget)->property(property);
    };
    EXPECT_EQ(value(u"colorPickerButton"_s, "color").value<QColor>(), QColor(231, 76, 60));
    EXPECT_EQ(value(u"borderView"_s, "hasBottomBorder"), true);
    EXPECT_EQ(value(u"segmentedControl"_s, "labels").toStringList().size(), 2);
    EXPECT_EQ(value(u"imageView"_s, "imageAlignment").value<Qt::Alignment>(),
              Qt::AlignBottom | Qt::AlignRight);
}
