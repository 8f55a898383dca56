// SPDX-License-Identifier: MIT
// Reports a bug as a program would that has "Report a Problem…" in its Help menu. The tracker is
// the page's own, and the page shows what it received.
#include "../LoopbackTracker.h"
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Ostrevane/CodebaseTicket.h>

#include <QAccessible>
#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFormLayout>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Pellarvine::CodebaseTicket;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("TicketsPage", text);
}

// As high as a one-line field, to stand level with its text.
QLabel *makeLabel(const QString &text, QWidget *buddy)
{
    auto *const label = new QLabel(text);
    label->setBuddy(buddy);
    label->setFixedHeight(4 * Theme::unit);
    return label;
}

// The headers for display, with the account's key masked.
QString masked(const QByteArray &headers)
{
    static const QRegularExpression credentials(u"^(authorization: *basic ).*$"_s,
                                                QRegularExpression::CaseInsensitiveOption
                                                        | QRegularExpression::MultilineOption);
    return QString::fromUtf8(headers).remove(u'\r').replace(credentials,
                                                            u"\\1%1"_s.arg(QString(12, u'•')));
}

class TicketsPage : public Page
{
    Q_OBJECT

public:
    explicit TicketsPage(QWidget *parent);

    void showExample() override;

Q_SIGNALS:
    void finished();

private:
    void send();
    void finish(const std::optional<NS::URLError> &error);
    void showRequest(const QByteArray &headers, const QByteArray &body);
    void showOutcome(const QString &text, bool isGood);

    QLineEdit *m_summary;
    QPlainTextEdit *m_description;
    QComboBox *m_answer;
    QPushButton *m_send;
    QLabel *m_outcome;
    QPlainTextEdit *m_request;
    LoopbackTracker *m_tracker;
};

TicketsPage::TicketsPage(QWidget *parent)
    : Page(::tr("Bug tickets"),
           ::tr("File a bug with one call. It returns at once; a background thread reports whether "
                "the ticket went through."),
           parent)
    , m_summary(new QLineEdit)
    , m_description(new QPlainTextEdit)
    , m_answer(new QComboBox)
    , m_send(new QPushButton(::tr("&Send")))
    , m_outcome(new QLabel)
    , m_request(new QPlainTextEdit)
    , m_tracker(new LoopbackTracker(u"api.tracker.example"_s, this))
{
    m_summary->setPlaceholderText(::tr("What went wrong, in one line"));
    m_description->setPlaceholderText(::tr("What you did, what you expected and what you saw"));
    m_description->setTabChangesFocus(true);
    m_description->setFixedHeight(11 * Theme::unit);
    m_description->document()->setDocumentMargin(2);
    m_answer->addItem(::tr("accepts it (201)"), u"201 Created"_s);
    m_answer->addItem(::tr("rejects the key (401)"), u"401 Unauthorized"_s);
    m_answer->addItem(::tr("is out of order (500)"), u"500 Internal Server Error"_s);
    m_answer->addItem(::tr("hangs up"), QString());

    auto *const form = new QFormLayout;
    form->setHorizontalSpacing(2 * Theme::unit);
    form->setVerticalSpacing(Theme::unit);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(makeLabel(::tr("S&ummary"), m_summary), m_summary);
    form->addRow(makeLabel(::tr("&Description"), m_description), m_description);
    form->addRow(makeLabel(::tr("The &tracker"), m_answer), m_answer);
    auto *const actions = new QHBoxLayout;
    actions->setSpacing(2 * Theme::unit);
    m_outcome->setWordWrap(true);
    m_outcome->setTextFormat(Qt::PlainText);
    actions->addWidget(m_send);
    actions->addWidget(m_outcome, 1);
    form->addRow(QString(), actions);

    m_request->setReadOnly(true);
    m_request->setFont(Theme::font(Theme::monospace));
    m_request->setFrameShape(QFrame::NoFrame);
    m_request->document()->setDocumentMargin(0);
    m_request->setPlaceholderText(::tr("Nothing yet"));
    m_request->setAccessibleName(::tr("What the tracker received"));
    m_request->setTabChangesFocus(true);
    QFrame *const card = makeCard(::tr("What the tracker received"));
    card->layout()->addWidget(m_request);

    content()->addLayout(form);
    content()->addWidget(card, 1);

    connect(m_send, &QPushButton::clicked, this, &TicketsPage::send);
    connect(m_summary, &QLineEdit::returnPressed, m_send, &QPushButton::click);
    connect(m_summary, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_send->setEnabled(!text.trimmed().isEmpty()); });
    connect(m_tracker, &LoopbackTracker::received, this, &TicketsPage::showRequest);
    m_send->setEnabled(false);
    CodebaseTicket::setTracker(u"https://api.tracker.example/"_s, u"gallery"_s);
    if (!m_tracker->start())
        showOutcome(::tr("The page’s tracker could not be started."), false);
}

void TicketsPage::showExample()
{
    m_summary->setText(::tr("Export as PDF loses the last page"));
    m_description->setPlainText(
            ::tr("1. Open “Minutes <draft> & notes”\n2. Choose File > Export as PDF\n\n"
                 "Expected: all 12 pages. Seen: 11, without a message."));
    QEventLoop loop;
    connect(this, &TicketsPage::finished, &loop, &QEventLoop::quit);
    send();
    loop.exec();
}

void TicketsPage::send()
{
    m_tracker->setAnswer(m_answer->currentData().toString().toLatin1());
    m_request->clear();
    m_send->setEnabled(false);
    showOutcome(::tr("Sending…"), true);
    const CodebaseTicket ticket(m_summary->text(), m_description->toPlainText());
    ticket.post([page = QPointer(this)](const std::optional<NS::URLError> &error) {
        // On a background thread: whether the page is still there is for the main one to see.
        QMetaObject::invokeMethod(qApp, [page, error] {
            if (page)
                page->finish(error);
        });
    });
}

void TicketsPage::finish(const std::optional<NS::URLError> &error)
{
    m_send->setEnabled(true);
    if (error)
        showOutcome(::tr("Not sent. %1").arg(error->localizedDescription), false);
    else
        showOutcome(::tr("Sent. The tracker has answered; what it says is not looked at."), true);
    Q_EMIT finished();
}

void TicketsPage::showRequest(const QByteArray &headers, const QByteArray &body)
{
    m_request->setPlainText(masked(headers) + u"\n\n"_s + QString::fromUtf8(body));
}

void TicketsPage::showOutcome(const QString &text, bool isGood)
{
    m_outcome->setText(text);
    m_outcome->setForegroundRole(isGood ? QPalette::WindowText : QPalette::BrightText);
    QAccessibleEvent announcement(m_outcome, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
}

} // namespace

Page *makeTicketsPage(QWidget *parent)
{
    return new TicketsPage(parent);
}

#include "TicketsPage.moc"
