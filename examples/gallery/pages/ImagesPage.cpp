// SPDX-License-Identifier: MIT
// The cover of a book in a library's catalogue. The user replaces the picture, and the record keeps
// the bytes of the file.
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/ReplaceableImageView.h>
#include <pellarvine/Shared/Data+Hashing.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QDrag>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTemporaryDir>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using Pellarvine::Data;
using Pellarvine::ReplaceableImageView;

namespace {

constexpr QSize coverPixels(600, 900);

void drawSun(QPainter &painter)
{
    QLinearGradient sky(0, 0, 0, 900);
    sky.setColorAt(0, QColor(0x24, 0x3b, 0x6b));
    sky.setColorAt(0.6, QColor(0xe9, 0x8a, 0x5f));
    sky.setColorAt(1, QColor(0xf7, 0xd4, 0x94));
    painter.fillRect(QRect(QPoint(), coverPixels), sky);
    painter.setBrush(QColor(0xff, 0xef, 0xc4));
    painter.drawEllipse(QPointF(410, 560), 90, 90);
    QPainterPath hills(QPointF(0, 900));
    hills.lineTo(0, 640);
    hills.cubicTo(180, 540, 320, 760, 600, 650);
    hills.lineTo(600, 900);
    painter.fillPath(hills, QColor(0x3b, 0x3a, 0x5c));
}

void drawSea(QPainter &painter)
{
    painter.fillRect(QRect(QPoint(), coverPixels), QColor(0xf2, 0xe8, 0xd5));
    for (int i = 0; i < 7; ++i) {
        QPainterPath wave(QPointF(0, 900));
        const double y = 430 + 70 * i;
        wave.lineTo(0, y);
        for (int x = 0; x < 600; x += 100)
            wave.quadTo(x + 50, y + (x / 100 % 2 ? 28 : -28), x + 100, y);
        wave.lineTo(600, 900);
        painter.fillPath(
                wave, QColor::fromHsvF(0.55F, 0.35F + 0.08F * float(i), 0.8F - 0.08F * float(i)));
    }
    painter.setBrush(QColor(0xc0, 0x39, 0x2b));
    painter.drawPolygon(QPolygonF { { 300, 220 }, { 300, 440 }, { 190, 440 } });
    painter.setBrush(QColor(0xd9, 0x5b, 0x43));
    painter.drawPolygon(QPolygonF { { 312, 250 }, { 312, 440 }, { 390, 440 } });
}

QImage cover(void (*draw)(QPainter &), const QString &title, const QString &author)
{
    QImage image(coverPixels, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    draw(painter);
    QFont font = Theme::font(Theme::heading);
    font.setPixelSize(64);
    painter.setFont(font);
    painter.setPen(draw == &drawSun ? QColor(Qt::white) : QColor(0x24, 0x3b, 0x6b));
    painter.drawText(QRect(40, 56, 520, 160), Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     title);
    font.setPixelSize(30);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(40, 820, 520, 50), Qt::AlignCenter, author);
    return image;
}

QImage sheet()
{
    QImage image(coverPixels, QImage::Format_RGB32);
    image.fill(QColor(0xfb, 0xfa, 0xf5));
    QPainter painter(&image);
    for (int y = 150; y < 800; y += 90)
        painter.fillRect(90, y, y % 180 ? 300 : 420, 30, QColor(0xa9, 0xad, 0xb5));
    return image;
}

// A file that can be dragged, as from a file manager.
class FileTile : public QFrame
{
    Q_OBJECT

public:
    FileTile(const QString &path, const QImage &picture, const QString &note)
        : m_path(path)
    {
        setObjectName(u"card"_s);
        setCursor(Qt::OpenHandCursor);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        auto *const view = new NS::ImageView;
        view->setFixedSize(4 * Theme::unit, 6 * Theme::unit);
        view->setImage(NS::Image(picture));
        view->setAttribute(Qt::WA_TransparentForMouseEvents);
        auto *const name = new QLabel(QFileInfo(path).fileName());
        auto *const text = new QLabel(note);
        text->setForegroundRole(QPalette::PlaceholderText);
        auto *const texts = new QVBoxLayout;
        texts->setSpacing(0);
        texts->addStretch();
        texts->addWidget(name);
        texts->addWidget(text);
        texts->addStretch();
        auto *const layout = new QHBoxLayout(this);
        layout->setContentsMargins(Theme::unit, Theme::unit, Theme::unit, Theme::unit);
        layout->setSpacing(Theme::unit);
        layout->addWidget(view);
        layout->addLayout(texts, 1);
        view->setAccessibleName(tr("Picture of %1").arg(name->text()));
    }

protected:
    void mousePressEvent(QMouseEvent *event) override { m_pressed = event->pos(); }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if ((event->pos() - m_pressed).manhattanLength() < Theme::unit)
            return;
        auto *const drag = new QDrag(this);
        auto *const files = new QMimeData;
        files->setUrls({ QUrl::fromLocalFile(m_path) });
        drag->setMimeData(files);
        drag->setPixmap(grab());
        drag->setHotSpot(m_pressed);
        drag->exec(Qt::CopyAction);
    }

private:
    QString m_path;
    QPoint m_pressed;
};

class ImagesPage : public Page
{
    Q_OBJECT

public:
    explicit ImagesPage(QWidget *parent);

    // The page is the delegate of the view. This is its only method.
    Q_INVOKABLE void replaceableImageView(Pellarvine::ReplaceableImageView *view,
                                          const Pellarvine::Data &didLoadImageData);

    void showExample() override
    {
        QMimeData files;
        files.setUrls({ QUrl::fromLocalFile(m_files.filePath(u"evening.png"_s)) });
        QDropEvent drop({ 20, 20 }, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QDragEnterEvent enter({ 20, 20 }, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_cover, &enter);
        QCoreApplication::sendEvent(m_cover, &drop);
        m_cover->setFocus();
    }

private:
    QFrame *makeWell();
    QFrame *makeRecord();
    QLayout *makeFiles();
    QFrame *makeKnobs();

    QTemporaryDir m_files;
    ReplaceableImageView *m_cover = new ReplaceableImageView;
    QLabel *m_size = new QLabel;
    QLabel *m_format = new QLabel;
    QLabel *m_digest = new QLabel;
};

ImagesPage::ImagesPage(QWidget *parent)
    : Page(tr("Images"),
           tr("The cover of a book in a catalogue. Double-click it to choose a picture, or drag a "
              "file onto it; the record keeps the file as it is."),
           parent)
{
    auto *const right = new QVBoxLayout;
    right->setSpacing(2 * Theme::unit);
    right->addWidget(makeRecord());
    right->addWidget(makeKnobs());
    right->addLayout(makeFiles());
    right->addStretch();
    auto *const row = new QHBoxLayout;
    row->setSpacing(2 * Theme::unit);
    row->addWidget(makeWell(), 1);
    row->addLayout(right, 1);
    content()->addLayout(row, 1);
}

QFrame *ImagesPage::makeWell()
{
    m_cover->setDelegate(this);
    m_cover->setAccessibleName(tr("Cover"));
    m_cover->setPlaceholderText(tr("Drop a picture here,\nor double-click to choose one"));
    m_cover->setImageScaling(NS::ImageView::scaleProportionallyUpOrDown);
    m_cover->setMinimumSize(30 * Theme::unit, 40 * Theme::unit);
    m_cover->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto *const card = makeCard(tr("Cover"));
    static_cast<QVBoxLayout *>(card->layout())->addWidget(m_cover, 1);
    return card;
}

QFrame *ImagesPage::makeRecord()
{
    m_digest->setFont(Theme::font(Theme::monospace));
    m_digest->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *const form = new QFormLayout;
    form->setHorizontalSpacing(2 * Theme::unit);
    form->setVerticalSpacing(Theme::unit);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow(tr("File"), m_size);
    form->addRow(tr("Picture"), m_format);
    form->addRow(tr("SHA-256"), m_digest);
    for (QLabel *const label : { m_size, m_format })
        label->setText(tr("none yet"));
    m_digest->setText(u"–\n"_s);
    auto *const card = makeCard(tr("What the record got"));
    static_cast<QVBoxLayout *>(card->layout())->addLayout(form);
    return card;
}

QFrame *ImagesPage::makeKnobs()
{
    auto *const scaling = new QComboBox;
    scaling->addItem(tr("In its own size, or smaller"), NS::ImageView::scaleProportionallyDown);
    scaling->addItem(tr("As large as fits"), NS::ImageView::scaleProportionallyUpOrDown);
    scaling->addItem(tr("Over the whole view"), NS::ImageView::scaleAxesIndependently);
    scaling->addItem(tr("In its own size"), NS::ImageView::scaleNone);
    scaling->setCurrentIndex(1);
    connect(scaling, &QComboBox::currentIndexChanged, this, [this, scaling] {
        m_cover->setImageScaling(NS::ImageView::ImageScaling(scaling->currentData().toInt()));
    });
    auto *const alignment = new QComboBox;
    alignment->addItem(tr("Centre"), int(Qt::AlignCenter));
    alignment->addItem(tr("Leading, top"), int(Qt::AlignLeading | Qt::AlignTop));
    alignment->addItem(tr("Trailing, bottom"), int(Qt::AlignTrailing | Qt::AlignBottom));
    connect(alignment, &QComboBox::currentIndexChanged, this, [this, alignment] {
        m_cover->setImageAlignment(Qt::Alignment(alignment->currentData().toInt()));
    });
    auto *const isEditable = new QCheckBox(tr("&Accepts drop, paste and delete"));
    isEditable->setChecked(true);
    connect(isEditable, &QCheckBox::toggled, m_cover, &NS::ImageView::setEditable);
    auto *const grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * Theme::unit);
    grid->setVerticalSpacing(Theme::unit);
    grid->setColumnStretch(1, 1);
    const auto addRow = [grid](const QString &name, QWidget *field) {
        auto *const label = new QLabel(name);
        label->setBuddy(field);
        const int row = grid->rowCount();
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
    };
    addRow(tr("&Size"), scaling);
    addRow(tr("&Place"), alignment);
    grid->addWidget(isEditable, grid->rowCount(), 1);
    auto *const card = makeCard(tr("The view"));
    static_cast<QVBoxLayout *>(card->layout())->addLayout(grid);
    return card;
}

QLayout *ImagesPage::makeFiles()
{
    const QImage evening = cover(&drawSun, tr("An Evening in the Hills"), tr("Ada Lindqvist"));
    const QImage sails = cover(&drawSea, tr("Two Sails"), tr("Jonas Weller"));
    const QString first = m_files.filePath(u"evening.png"_s);
    const QString second = m_files.filePath(u"sails.jpg"_s);
    const QString notes = m_files.filePath(u"notes.txt"_s);
    evening.save(first);
    sails.save(second, nullptr, 90);
    QFile file(notes);
    if (file.open(QIODevice::WriteOnly))
        file.write("Ask the printer for the spine.\n");
    auto *const row = new QHBoxLayout;
    row->setSpacing(Theme::unit);
    const QList<FileTile *> tiles { new FileTile(first, evening, tr("drag me")),
                                    new FileTile(second, sails, tr("me too")),
                                    new FileTile(notes, sheet(), tr("not welcome")) };
    int width = 0;
    for (FileTile *const tile : tiles) {
        row->addWidget(tile, 1);
        width = std::max(width, tile->sizeHint().width());
    }
    for (FileTile *const tile : tiles)
        tile->setMinimumWidth(width); // so that all have the same width
    return row;
}

void ImagesPage::replaceableImageView(ReplaceableImageView *view, const Data &didLoadImageData)
{
    const QString digest =
            Pellarvine::hashedHexString(didLoadImageData, Pellarvine::HashingAlgorithm::sha256);
    m_size->setText(tr("%1 bytes").arg(QLocale().toString(didLoadImageData.size())));
    const QSize pixels = view->image().bitmap().size();
    m_format->setText(tr("%1 × %2 pixels").arg(pixels.width()).arg(pixels.height()));
    m_digest->setText(digest.first(32) + u'\n' + digest.sliced(32));
}

} // namespace

Page *makeImagesPage(QWidget *parent)
{
    return new ImagesPage(parent);
}

#include "ImagesPage.moc"
