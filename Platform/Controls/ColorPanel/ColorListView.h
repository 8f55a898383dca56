// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include <QColor>
#include <QListWidget>

namespace NS {
struct ColorList;
}

namespace Pellarvine::detail {

/// The colours of a list as tiles. Arrow keys go from tile to tile and choose.
class ColorListView : public QListWidget
{
    Q_OBJECT

public:
    /// A tile's side includes the gap around it.
    explicit ColorListView(int tileSide = 40, QWidget *parent = nullptr);

    /// The space on each side of a tile.
    static int gap(int tileSide);

    void setList(const NS::ColorList &list);
    /// Marks the colour, if it is one of the list.
    void setColor(const QColor &color);

Q_SIGNALS:
    void chosen(const QColor &color);

private:
    QColor m_color;
};

} // namespace Pellarvine::detail
