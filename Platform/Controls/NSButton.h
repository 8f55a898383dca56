// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSButtonCell.h>

#include <QPushButton>

#include <memory>

namespace NS {

/// A push button whose interior is drawn by its cell. The bezel, the focus ring, keys and clicks
/// are those of QPushButton in the program's style. Main thread only.
///
///     auto *const button = new NS::Button(bar);
///     button->setCell(new LevelCell);
///     button->setAccessibleName(tr("Level"));
class PELLARVINE_EXPORT Button : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(NS::ButtonCell *cell READ cell WRITE setCell NOTIFY cellChanged DESIGNABLE false)

public:
    /// With a plain ButtonCell.
    explicit Button(QWidget *parent = nullptr);
    explicit Button(const QString &text, QWidget *parent = nullptr); ///< likewise
    ~Button() override;

    /// Null only after the program has deleted the cell.
    ButtonCell *cell() const;
    /// Takes ownership of the cell, which another button may own, and deletes the previous one.
    /// `cell` must not be null.
    void setCell(ButtonCell *cell);

Q_SIGNALS:
    void cellChanged(NS::ButtonCell *cell);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    friend class ButtonCell;

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
