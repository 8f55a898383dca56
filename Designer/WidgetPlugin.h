// SPDX-License-Identifier: MIT
#pragma once

#include "WidgetTable.h"

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/// Answers Qt Designer's questions about one class from its entry in the table.
class WidgetPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit WidgetPlugin(WidgetEntry entry, QObject *parent = nullptr);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget *createWidget(QWidget *parent) override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface *core) override;
    QString domXml() const override;

private:
    WidgetEntry m_entry;
    bool m_isInitialized = false;
};
