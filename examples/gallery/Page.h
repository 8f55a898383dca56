// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

QT_FORWARD_DECLARE_CLASS(QBoxLayout)
QT_FORWARD_DECLARE_CLASS(QFrame)

/// What every page of the gallery shares: a heading that says what it shows, a line below it, and
/// the room for the piece itself.
class Page : public QWidget
{
    Q_OBJECT

public:
    Page(const QString &heading, const QString &summary, QWidget *parent = nullptr);

    /// Where the page puts its widgets, below the heading.
    QBoxLayout *content() const { return m_content; }

    /// Aligns the texts of its labels, except for code, and of its spin boxes to the side of the
    /// layout direction. By themselves they go by the direction of their text, which is English.
    void alignTexts();

    /// Brings the page into the state that its picture should show. Called for screenshots only.
    virtual void showExample() { }

private:
    QBoxLayout *m_content;
};

/// A panel with a fine border and round corners that groups what belongs together. `title` may be
/// empty. Add widgets to its `layout()`, a vertical box.
QFrame *makeCard(const QString &title, QWidget *parent = nullptr);
