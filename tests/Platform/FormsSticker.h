// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFrame>
#include <QLineEdit>
#include <QStringList>

namespace Forms {

/// A widget of a program, with a property of each kind that forms can set.
class Sticker : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(Sides sides READ sides WRITE setSides)
    Q_PROPERTY(Mode mode MEMBER mode WRITE setMode)
    Q_PROPERTY(double gap MEMBER gap WRITE setGap)
    Q_PROPERTY(QColor tint MEMBER tint)
    Q_PROPERTY(QLineEdit *field MEMBER field)

public:
    enum Side {
        left = 1,
        right = 2,
    };
    Q_DECLARE_FLAGS(Sides, Side)
    Q_FLAG(Sides)
    enum Mode {
        quiet,
        loud,
    };
    Q_ENUM(Mode)

    explicit Sticker(QWidget *parent = nullptr)
        : QFrame(parent)
    { }

    Sides sides() const { return m_sides; }
    void setSides(Sides sides) { m_sides = sides; }
    void setMode(Mode newMode) { mode = newMode; }
    void setGap(double newGap) { gap = newGap; }

    Q_INVOKABLE void addPage(QWidget *page) { pages.append(page->objectName()); }
    Q_INVOKABLE void awakeFromNib()
    {
        ++awakenings;
        hadField = field;
        calls.append(objectName());
    }

    Mode mode = quiet;
    double gap = 0;
    QColor tint;
    QLineEdit *field = nullptr;
    QStringList pages;
    int awakenings = 0;
    bool hadField = false;

    static inline QStringList calls; ///< the objects whose awakeFromNib() was called, in order

private:
    Sides m_sides;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Sticker::Sides)

} // namespace Forms
