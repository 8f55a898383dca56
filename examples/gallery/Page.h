// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

QT_FORWARD_DECLARE_CLASS(QBoxLayout)
QT_FORWARD_DECLARE_CLASS(QFrame)
QT_FORWARD_DECLARE_CLASS(QLineEdit)

/// A page of the gallery: a heading, a sentence below it, and the contents.
class Page : public QWidget
{
    Q_OBJECT

public:
    Page(const QString &heading, const QString &summary, QWidget *parent = nullptr);

    /// The layout for the page's widgets, below the heading.
    QBoxLayout *content() const { return m_content; }

    /// Aligns its labels, except those with code, and its spin boxes by the layout direction. By
    /// default a text is aligned by its own direction, and English runs from left to right.
    void alignTexts();

    /// Prepares the page for its picture. Called for screenshots only.
    virtual void showExample() { }

private:
    QBoxLayout *m_content;
};

/// A panel with a border and round corners for a group of widgets. `title` may be empty. Add
/// widgets to its `layout()`, a vertical box.
QFrame *makeCard(const QString &title, QWidget *parent = nullptr);

/// Shows or hides the button that clears the field. It has a name for screen readers, which Qt does
/// not give it.
void setClearButton(QLineEdit *field, bool isShown);
