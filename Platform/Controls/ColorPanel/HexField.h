// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include <QColor>
#include <QLineEdit>

namespace Pellarvine::detail {

/// A field for a colour in hexadecimal digits. Return and leaving the field enter what was typed,
/// Esc takes it back. Text that is no colour stays, marked and explained, until it is mended.
class HexField : public QLineEdit
{
    Q_OBJECT

public:
    explicit HexField(QWidget *parent = nullptr);

    /// Shows the colour in place of what was typed.
    void setColor(const QColor &color, bool withAlpha);

Q_SIGNALS:
    void entered(const QColor &color);

protected:
    bool event(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void enter();
    void restore();
    void mark(const QString &explanation);

    QString m_shown; // the text of the colour
    QAction *m_warning;
};

} // namespace Pellarvine::detail
