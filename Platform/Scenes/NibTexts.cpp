// SPDX-License-Identifier: MIT
#include "Scenes/NibTexts.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace Pellarvine::detail {

NibTexts::NibTexts(QByteArray context, bool isById)
    : m_context(std::move(context))
    , m_isById(isById)
{ }

QString NibTexts::add(QObject *object, const QByteArray &property, const NibTranslatable &text)
{
    m_texts.push_back({ object, property, text, {} });
    return translation(text);
}

QStringList NibTexts::add(QObject *object, const QByteArray &property,
                          const QList<NibTranslatable> &texts)
{
    m_texts.push_back({ object, property, {}, texts });
    return translations(texts);
}

void NibTexts::remove(const QObject *object, const QByteArray &property)
{
    std::erase_if(m_texts, [&](const Text &each) {
        return each.object == object && each.property == property;
    });
}

void NibTexts::follow(QWidget *form)
{
    setParent(form);
    form->installEventFilter(this);
}

// Called before the form handles the event: its code may set other texts then. Setting a text can
// delete the form, and this with it.
bool NibTexts::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::LanguageChange)
        return false;
    const QPointer<NibTexts> self = this;
    for (std::size_t i = 0; self && i < m_texts.size(); ++i) {
        const Text each = m_texts[i];
        if (!each.object)
            continue;
        each.object->setProperty(each.property.constData(),
                                 each.list.isEmpty() ? QVariant(translation(each.text))
                                                     : QVariant(translations(each.list)));
    }
    return false;
}

QString NibTexts::translation(const NibTranslatable &text) const
{
    return m_isById ? qtTrId(text.qualifier.constData())
                    : QCoreApplication::translate(m_context.constData(), text.source.constData(),
                                                  text.qualifier.constData());
}

// An empty text would be translated by the header of a catalogue.
QStringList NibTexts::translations(const QList<NibTranslatable> &texts) const
{
    QStringList all;
    for (const NibTranslatable &text : texts)
        all.append(text.source.isEmpty() ? QString() : translation(text));
    return all;
}

} // namespace Pellarvine::detail
