// SPDX-License-Identifier: MIT
// A mail program with the scenes and segues of mail/Mail.storyboard. At its side are the stack, and
// the storyboard with the last segue highlighted.
#include "../FlatStyle.h"
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/NavigationController.h>
#include <pellarvine/Pellarvine/NavigationItemViewController.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSStoryboardSegue.h>
#include <pellarvine/Shared/Binding.h>

#include <QBoxLayout>
#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTextBrowser>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using Pellarvine::Binding;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("NavigationPage", text);
}

struct Letter
{
    QString sender;
    QString subject;
    QString text;
};

// The model of all scenes. The oldest letter comes first.
class Mailbox : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool showsSubjects MEMBER m_showsSubjects NOTIFY changed)
    Q_PROPERTY(bool newestFirst MEMBER m_newestFirst NOTIFY changed)

public:
    const std::vector<Letter> &letters() const { return m_letters; }
    bool showsSubjects() const { return m_showsSubjects; }
    bool newestFirst() const { return m_newestFirst; }

Q_SIGNALS:
    void changed();
    void walked(const QString &segue);

private:
    bool m_showsSubjects = true;
    bool m_newestFirst = true;
    std::vector<Letter> m_letters {
        { ::tr("Ida Sørensen"), ::tr("Keys to the boathouse"),
          ::tr("The spare key hangs behind the oars, on the second nail. Please put it back when "
               "you are done: last autumn it spent three weeks in somebody’s coat.") },
        { ::tr("Tomás Ferreira"), ::tr("Proofs of the almanac"),
          ::tr("The printer needs our corrections by Thursday. I have marked pages 12 and 40, "
               "where "
               "the tides of March slipped into April. Could you look at the moon tables once "
               "more?") },
        { ::tr("Noor Haddad"), ::tr("A bench for the north pier"),
          ::tr("The council says yes, if we carry it there ourselves. It weighs eighty kilograms. "
               "I "
               "have a trolley, a thermos, and one strong cousin; we need two more pairs of hands "
               "on Saturday at nine.") },
        { ::tr("Ravi Menon"), ::tr("Your barometer is ready"),
          ::tr("The glass was sound, only the hand stuck. It has stood beside mine for a week now, "
               "and they agree to within half a hectopascal. Come by before noon.") },
    };
};

// A scene, which passes the mailbox to the next scene.
class MailScene : public Pellarvine::NavigationItemViewController
{
    Q_OBJECT

public:
    using NavigationItemViewController::NavigationItemViewController;

    void setMailbox(Mailbox *mailbox) { m_mailbox = mailbox; }
    Mailbox *mailbox() const { return m_mailbox; }

    void prepareForSegue(NS::StoryboardSegue *segue, QObject *) override
    {
        if (auto *const next = qobject_cast<MailScene *>(segue->destinationController()))
            next->setMailbox(m_mailbox);
        Q_EMIT m_mailbox->walked(segue->identifier());
    }

private:
    Mailbox *m_mailbox = nullptr;
};

class MailController : public Pellarvine::NavigationController
{
    Q_OBJECT

public:
    using NavigationController::NavigationController;

    void prepareForSegue(NS::StoryboardSegue *segue, QObject *) override
    {
        if (auto *const first = qobject_cast<MailScene *>(segue->destinationController()))
            first->setMailbox(&m_mailbox);
    }
    Mailbox *mailbox() { return &m_mailbox; }

private:
    Mailbox m_mailbox;
};

class LetterController : public MailScene
{
    Q_OBJECT

public:
    using MailScene::MailScene;

    void setNumber(std::size_t number) { m_number = number % mailbox()->letters().size(); }

    void viewDidLoad() override
    {
        const Letter &letter = mailbox()->letters()[m_number];
        setTitle(letter.subject);
        view()->findChild<QLabel *>(u"subject"_s)->setText(letter.subject);
        auto *const sender = view()->findChild<QLabel *>(u"sender"_s);
        sender->setText(::tr("from %1").arg(letter.sender));
        sender->setForegroundRole(QPalette::PlaceholderText);
        auto *const text = view()->findChild<QTextBrowser *>(u"text"_s);
        text->setPlainText(letter.text);
        text->document()->setDocumentMargin(0);
    }
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override
    {
        MailScene::prepareForSegue(segue, sender);
        if (auto *const next = qobject_cast<LetterController *>(segue->destinationController()))
            next->setNumber(m_number + 1);
    }

private:
    std::size_t m_number = 0;
};

class SettingsController : public MailScene
{
    Q_OBJECT

public:
    using MailScene::MailScene;

    void viewDidLoad() override
    {
        m_subjects.emplace(mailbox(), u"showsSubjects"_s,
                           view()->findChild<QCheckBox *>(u"subjects"_s), u"checked"_s);
        m_order.emplace(mailbox(), u"newestFirst"_s,
                        view()->findChild<QCheckBox *>(u"newestFirst"_s), u"checked"_s);
    }

private:
    std::optional<Binding> m_subjects;
    std::optional<Binding> m_order;
};

class ListController : public MailScene
{
    Q_OBJECT
    Q_PROPERTY(QListWidget *letters MEMBER m_letters NOTIFY lettersChanged)

public:
    using MailScene::MailScene;

    void viewDidLoad() override
    {
        fill();
        connect(mailbox(), &Mailbox::changed, this, &ListController::fill);
    }
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override
    {
        MailScene::prepareForSegue(segue, sender);
        auto *const destination = qobject_cast<MailScene *>(segue->destinationController());
        if (auto *const letter = qobject_cast<LetterController *>(destination))
            letter->setNumber(m_letters->currentItem()->data(Qt::UserRole).toULongLong());
        else
            present(destination);
    }

Q_SIGNALS:
    void lettersChanged();

private:
    void fill()
    {
        m_letters->clear();
        const std::vector<Letter> &letters = mailbox()->letters();
        for (std::size_t i = 0; i < letters.size(); ++i) {
            const std::size_t number = mailbox()->newestFirst() ? letters.size() - 1 - i : i;
            const Letter &letter = letters[number];
            auto *const item = new QListWidgetItem(mailbox()->showsSubjects()
                                                           ? letter.sender + u'\n' + letter.subject
                                                           : letter.sender,
                                                   m_letters);
            item->setData(Qt::UserRole, qulonglong(number));
        }
        m_letters->setCurrentRow(0);
    }

    // Called by a modal segue: shows the destination in a dialog.
    void present(MailScene *controller)
    {
        auto *const dialog = new QDialog(view()->window());
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        controller->setParent(dialog);
        auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
        connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
        auto *const layout = new QVBoxLayout(dialog);
        layout->addWidget(controller->view());
        layout->addWidget(buttons);
        dialog->setWindowTitle(controller->title());
        dialog->open();
    }

    QListWidget *m_letters = nullptr;
};

// The titles of the stack, the top one first.
class StackView : public PictureWidget
{
    Q_OBJECT
    Q_PROPERTY(QStringList titles READ titles WRITE setTitles NOTIFY titlesChanged)

public:
    StackView()
    {
        setAccessibleName(::tr("The stack"));
        setMinimumHeight(visibleRows * (rowHeight + gap) - gap);
    }

    QStringList titles() const { return m_titles; }
    void setTitles(const QStringList &titles)
    {
        if (titles == m_titles)
            return;
        m_titles = titles;
        setAccessibleDescription(titles.join(u", "_s));
        update();
        Q_EMIT titlesChanged();
    }

Q_SIGNALS:
    void titlesChanged();

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        for (qsizetype i = 0; i < std::min(m_titles.size(), visibleRows); ++i) {
            const qsizetype level = m_titles.size() - 1 - i;
            const bool isTop = i == 0;
            const bool isLast = i == visibleRows - 1 && level > 0;
            const QRect row(0, int(i) * (rowHeight + gap), width(), rowHeight);
            FlatStyle::drawBox(
                    &painter, row, 6, palette().color(isTop ? QPalette::Highlight : QPalette::Mid),
                    palette().brush(isTop ? QPalette::Highlight : QPalette::AlternateBase));
            painter.setPen(palette().color(isTop ? QPalette::HighlightedText : QPalette::Text));
            const QRect inner = row.adjusted(12, 0, -12, 0);
            const auto draw = [&](const QRect &part, const QString &text) {
                style()->drawItemText(&painter, style()->visualRect(layoutDirection(), inner, part),
                                      int(QStyle::visualAlignment(
                                              layoutDirection(), Qt::AlignVCenter | Qt::AlignLeft)),
                                      palette(), true, text);
            };
            const QRect title = inner.adjusted(3 * Theme::unit, 0, 0, 0);
            draw(inner, QString::number(level));
            draw(title,
                 isLast ? ::tr("and %1 below").arg(level)
                        : fontMetrics().elidedText(m_titles[level], Qt::ElideRight, title.width()));
        }
    }

private:
    static constexpr int rowHeight = 4 * Theme::unit;
    static constexpr int gap = Theme::unit / 2;
    static constexpr qsizetype visibleRows = 4;

    QStringList m_titles;
};

class NavigationPage : public Page
{
public:
    explicit NavigationPage(QWidget *parent);
    void showExample() override;

private:
    QWidget *makeReader();
    QWidget *makeFile();
    void showSegue(const QString &identifier);

    std::unique_ptr<MailController> m_mail;
    StackView *m_stack = new StackView;
    QPlainTextEdit *m_file = new QPlainTextEdit;
    std::optional<Binding> m_binding;
};

QVariant titles(const QVariant &stack)
{
    QStringList titles;
    const auto controllers = stack.value<QList<NS::ViewController *>>();
    for (const NS::ViewController *const controller : controllers)
        titles.append(controller->title());
    return titles;
}

NavigationPage::NavigationPage(QWidget *parent)
    : Page(::tr("Navigation"),
           ::tr("A mail program. Its screens are forms of Qt Designer, and a storyboard connects "
                "them. Open a letter, go to the next one, go back, archive it: the stack follows."),
           parent)
{
    NS::registerClass<MailController>();
    NS::registerClass<ListController>();
    NS::registerClass<LetterController>();
    NS::registerClass<SettingsController>();
    const auto storyboard = NS::Storyboard::storyboardWithName(u"mail/Mail"_s);
    m_mail.reset(static_cast<MailController *>(storyboard->instantiateInitialController()));
    m_mail->setBackInputEnabled(true);

    QFrame *const stack = makeCard(::tr("The stack, by a binding"));
    stack->layout()->addWidget(m_stack);
    auto *const column = new QVBoxLayout;
    column->setSpacing(2 * Theme::unit);
    column->addWidget(stack);
    column->addWidget(makeFile(), 1);
    auto *const row = new QHBoxLayout;
    row->setSpacing(2 * Theme::unit);
    row->addWidget(makeReader(), 5);
    row->addLayout(column, 6);
    content()->addLayout(row, 1);

    m_binding.emplace(m_mail.get(), u"navigationStack"_s, m_stack, u"titles"_s, false, titles);
    connect(m_mail->mailbox(), &Mailbox::walked, this, &NavigationPage::showSegue);
}

QWidget *NavigationPage::makeReader()
{
    QFrame *const card = makeCard({});
    card->layout()->setContentsMargins(4, 4, 4, 4);
    card->layout()->addWidget(m_mail->view());
    return card;
}

QWidget *NavigationPage::makeFile()
{
    QFile file(m_mail->storyboard()->fileName());
    if (file.open(QIODevice::ReadOnly)) {
        // The lines from the first segue to the end, without the outermost element.
        QString text = QString::fromUtf8(file.readAll());
        text = text.sliced(text.indexOf("  <segue"_L1));
        text.replace("\n  "_L1, "\n"_L1).remove("</storyboard>"_L1);
        m_file->setPlainText(text.trimmed());
        m_file->document()->setDocumentMargin(0);
    }
    QFont font = Theme::font(Theme::monospace);
    font.setPointSizeF(font.pointSizeF() * 0.9);
    m_file->setFont(font);
    m_file->setReadOnly(true);
    m_file->setTabChangesFocus(true);
    m_file->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_file->setFrameShape(QFrame::NoFrame);
    m_file->setLayoutDirection(Qt::LeftToRight);
    m_file->setAccessibleName(::tr("Segues of the storyboard"));
    QFrame *const card = makeCard(::tr("Mail.storyboard"));
    card->layout()->addWidget(m_file);
    return card;
}

void NavigationPage::showSegue(const QString &identifier)
{
    QTextCursor cursor = m_file->document()->find(u"identifier=\"%1\""_s.arg(identifier));
    if (cursor.isNull())
        return;
    cursor.movePosition(QTextCursor::StartOfBlock);
    const QTextCursor end = m_file->document()->find(u"/>"_s, cursor);
    QTextEdit::ExtraSelection walked;
    cursor.setPosition(end.selectionEnd(), QTextCursor::KeepAnchor);
    walked.cursor = cursor;
    walked.format.setBackground(palette().highlight());
    walked.format.setForeground(palette().highlightedText());
    m_file->setExtraSelections({ walked });
    QTextCursor start = cursor;
    start.setPosition(cursor.selectionStart());
    m_file->setTextCursor(start);
    m_file->ensureCursorVisible();
}

void NavigationPage::showExample()
{
    m_mail->navigationStack().constLast()->performSegue(u"open"_s);
    m_mail->navigationStack().constLast()->performSegue(u"next"_s);
}

} // namespace

Page *makeNavigationPage(QWidget *parent)
{
    return new NavigationPage(parent);
}

#include "NavigationPage.moc"
