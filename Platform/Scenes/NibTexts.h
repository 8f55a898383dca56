// SPDX-License-Identifier: MIT
// Not API: the texts of a form that follow the language.
#pragma once

#include "Scenes/NibFile.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <vector>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Sets the translated texts of a form again when the language changes. One table for the whole
/// form.
class NibTexts : public QObject
{
public:
    /// The context of the translations. If `isById`, they are found by their IDs instead.
    NibTexts(QByteArray context, bool isById);

    /// Adds the text of a property, and returns its translation.
    QString add(QObject *object, const QByteArray &property, const NibTranslatable &text);
    /// The same for a list of texts.
    QStringList add(QObject *object, const QByteArray &property,
                    const QList<NibTranslatable> &texts);

    /// The property no longer follows the language.
    void remove(const QObject *object, const QByteArray &property);

    bool isEmpty() const { return m_texts.empty(); }

    /// Becomes a child of the form, and follows its changes of language.
    void follow(QWidget *form);

    bool eventFilter(QObject *form, QEvent *event) override;

private:
    struct Text
    {
        QPointer<QObject> object;
        QByteArray property;
        NibTranslatable text;
        QList<NibTranslatable> list; // instead of the text, unless it is empty
    };

    QString translation(const NibTranslatable &text) const;
    QStringList translations(const QList<NibTranslatable> &texts) const;

    QByteArray m_context;
    bool m_isById;
    std::vector<Text> m_texts;
};

} // namespace Pellarvine::detail
