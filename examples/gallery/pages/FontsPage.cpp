// SPDX-License-Identifier: MIT
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Platform/NSFont.h>
#include <pellarvine/Platform/NSFontManager.h>
#include <pellarvine/Shared/Font.h>

#include <QComboBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace Pellarvine;

namespace {

using NS::FontManager;

constexpr double firstSize = 28; // points

// All weights of the family, each in its own font. The weight of the shown font is highlighted.
class Ladder : public PictureWidget
{
public:
    Ladder()
    {
        setAccessibleName(tr("The family's weights"));
        setMinimumWidth(30 * Theme::unit);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    }

    void setShownFont(const QFont &font)
    {
        m_weights = FontManager::weights(font);
        m_weight = FontManager::weight(font);
        m_steps.clear();
        for (const int weight : m_weights) {
            QFont step = font;
            step.setStyleName(QString());
            step.setWeight(QFont::Weight(weight));
            m_steps.append(withSize(step, Theme::font(Theme::body).pointSizeF() * 1.2));
        }
        setAccessibleName(tr("Weight %1 of %2").arg(m_weight).arg(m_weights.size()));
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double step =
                std::min(5.0 * Theme::unit, double(height()) / double(m_weights.size()));
        // The lightest is at the bottom.
        for (qsizetype i = 0; i < m_weights.size(); ++i) {
            const QRectF rung(0, double(m_weights.size() - 1 - i) * step, width(), step);
            const bool isShown = m_weights[i] == m_weight;
            if (isShown) {
                painter.setPen(Qt::NoPen);
                painter.setBrush(palette().color(QPalette::Highlight));
                painter.drawRoundedRect(rung.adjusted(0, 2, 0, -2), 6, 6);
            }
            const QRectF text = rung.adjusted(1.5 * Theme::unit, 0, -1.5 * Theme::unit, 0);
            painter.setPen(palette().color(isShown ? QPalette::HighlightedText : QPalette::Text));
            painter.setFont(m_steps[i]);
            painter.drawText(text, Qt::AlignLeading | Qt::AlignVCenter,
                             QFontInfo(m_steps[i]).styleName());
            painter.setFont(font());
            painter.setPen(palette().color(isShown ? QPalette::HighlightedText
                                                   : QPalette::PlaceholderText));
            painter.drawText(text, Qt::AlignTrailing | Qt::AlignVCenter,
                             locale().toString(m_weights[i]));
        }
    }

private:
    QList<int> m_weights;
    QList<QFont> m_steps;
    int m_weight = 0;
};

class FontsPage : public Page
{
public:
    explicit FontsPage(QWidget *parent)
        : Page(tr("Fonts"),
               tr("From a font to a bolder, lighter, italic or larger one of its family. A button "
                  "is disabled if the family has no such face."),
               parent)
        , m_family(new QComboBox)
        , m_ladder(new Ladder)
        , m_sample(new QLabel(tr("Quarterly report")))
        , m_description(new QLabel)
        , m_name(new QLineEdit)
        , m_answer(new QLabel)
    {
        auto *const row = new QHBoxLayout;
        row->setSpacing(2 * Theme::unit);
        row->addWidget(makeLadder());
        auto *const column = new QVBoxLayout;
        column->setSpacing(2 * Theme::unit);
        column->addWidget(makeSample(), 1);
        column->addWidget(makeLookup());
        row->addLayout(column, 1);
        content()->addLayout(row, 1);
        m_family->setCurrentText(u"Inter"_s);
        m_name->setText(u"Inter-SemiBold"_s);
    }

    void showExample() override
    {
        showFont(heavier(heavier(italicVariant(NS::fontWithName(u"Inter"_s, firstSize).value()))));
    }

private:
    struct Step
    {
        QPushButton *button;
        QFont (*convert)(const QFont &);
    };

    QFrame *makeLadder()
    {
        auto *const card = makeCard(tr("Weights of the family"));
        for (const QString &family : QFontDatabase::families()) {
            if (!QFontDatabase::isPrivateFamily(family) && QFontDatabase::styles(family).size() > 1)
                m_family->addItem(family);
        }
        m_family->setAccessibleName(tr("Family"));
        connect(m_family, &QComboBox::currentTextChanged, this,
                [this](const QString &family) { showFont(withSize(QFont(family), firstSize)); });
        card->layout()->addWidget(m_family);
        card->layout()->addWidget(m_ladder);
        return card;
    }

    QFrame *makeSample()
    {
        auto *const card = makeCard(tr("The font"));
        m_sample->setMinimumHeight(8 * Theme::unit);
        m_sample->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
        m_description->setForegroundRole(QPalette::PlaceholderText);
        auto *const buttons = new QGridLayout;
        buttons->setSpacing(Theme::unit);
        const auto add = [&](const QString &text, QFont (*convert)(const QFont &)) {
            auto *const button = new QPushButton(text);
            connect(button, &QPushButton::clicked, this,
                    [this, convert] { showFont(convert(m_shown)); });
            const int index = int(m_steps.size());
            buttons->addWidget(button, index % 2, index / 2);
            m_steps.append({ button, convert });
        };
        add(tr("Hea&vier"), &heavier);
        add(tr("&Lighter"), &lighter);
        add(tr("&Bold"), &boldVariant);
        add(tr("&Not bold"), &nonBoldVariant);
        add(tr("&Italic"), &italicVariant);
        add(tr("&Upright"), &nonItalicVariant);
        add(tr("Lar&ger"), &larger);
        add(tr("&Smaller"), &smaller);
        card->layout()->addWidget(m_sample);
        card->layout()->addWidget(m_description);
        static_cast<QBoxLayout *>(card->layout())->addLayout(buttons);
        return card;
    }

    QFrame *makeLookup()
    {
        auto *const card = makeCard(tr("Look up by name"));
        m_name->setAccessibleName(tr("Name of a font"));
        m_name->setPlaceholderText(tr("PostScript name or family"));
        setClearButton(m_name, true);
        m_answer->setMinimumHeight(3 * Theme::unit);
        m_answer->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        connect(m_name, &QLineEdit::textChanged, this, &FontsPage::lookUp);
        card->layout()->addWidget(m_name);
        card->layout()->addWidget(m_answer);
        return card;
    }

    void showFont(const QFont &font)
    {
        m_shown = font;
        m_sample->setFont(font);
        m_ladder->setShownFont(font);
        const QFontInfo info(font);
        m_description->setText(tr("%1 %2, weight %3, %4 pt")
                                       .arg(info.family(), info.styleName())
                                       .arg(FontManager::weight(font))
                                       .arg(FontManager::pointSize(font)));
        for (const Step &step : m_steps)
            step.button->setEnabled(step.convert(font) != font);
    }

    void lookUp(const QString &name)
    {
        const auto font = NS::fontWithName(name, Theme::font(Theme::body).pointSizeF() * 1.2);
        m_answer->setFont(font.value_or(QFont()));
        const QFontInfo info(m_answer->font());
        m_answer->setText(font ? u"%1 %2"_s.arg(info.family(), info.styleName())
                               : tr("There is no such font."));
    }

    QFont m_shown;
    QComboBox *m_family;
    Ladder *m_ladder;
    QLabel *m_sample;
    QLabel *m_description;
    QLineEdit *m_name;
    QLabel *m_answer;
    QList<Step> m_steps;
};

} // namespace

Page *makeFontsPage(QWidget *parent)
{
    return new FontsPage(parent);
}
