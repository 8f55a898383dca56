// SPDX-License-Identifier: MIT
// The Info.plist of a program, the facts in it, and the about window.
#include "../InfoPlist.h"
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Ostrevane/App.h>
#include <pellarvine/Pellarvine/AboutWindowController.h>
#include <pellarvine/Platform/NSBundle.h>

#include <QCoreApplication>
#include <QEvent>
#include <QFormLayout>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;
using Pellarvine::AboutWindowController;
using Pellarvine::App;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("AboutPage", text);
}

const QString example = uR"(<plist version="1.0">
<dict>
  <key>CFBundleDisplayName</key>
  <string>Letters</string>
  <key>CFBundleShortVersionString</key>
  <string>2.1</string>
  <key>CFBundleVersion</key>
  <string>418</string>
  <key>CFBundleIdentifier</key>
  <string>org.example.letters</string>
  <key>NSHumanReadableCopyright</key>
  <string>© 2026 The Letters Company</string>
</dict>
</plist>
)"_s;

// A picture of the window.
class Preview : public QLabel
{
public:
    explicit Preview(QWidget *parent = nullptr)
        : QLabel(parent)
    {
        setAlignment(Qt::AlignCenter);
        setAccessibleName(::tr("The about window"));
    }

    void showWindow()
    {
        AboutWindowController controller;
        QWidget *const window = controller.window();
        if (!window)
            return;
        window->ensurePolished();
        window->adjustSize();
        setPixmap(window->grab());
    }

protected:
    void changeEvent(QEvent *event) override
    {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            showWindow();
    }
};

class AboutPage : public Page
{
public:
    explicit AboutPage(QWidget *parent);

private:
    QFrame *makeFacts();
    void addFact(const QString &name, std::function<QString()> fact);
    void read();

    InfoPlist m_infoPlist;
    QPlainTextEdit *m_editor;
    QLabel *m_problem;
    QFormLayout *m_form;
    QList<std::pair<QLabel *, std::function<QString()>>> m_facts;
    Preview *m_preview;
};

AboutPage::AboutPage(QWidget *parent)
    : Page(::tr("About"),
           ::tr("Change the program’s Info.plist. The facts and the about window, which every "
                "program has, show the new values."),
           parent)
    , m_editor(new QPlainTextEdit)
    , m_problem(new QLabel)
    , m_form(new QFormLayout)
    , m_preview(new Preview)
{
    m_editor->setFont(Theme::font(Theme::monospace));
    m_editor->setFrameShape(QFrame::NoFrame);
    m_editor->document()->setDocumentMargin(0);
    m_editor->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_editor->setTabChangesFocus(true);
    m_editor->setAccessibleName(u"Info.plist"_s);
    // The lines of a file run from left to right in every language.
    m_editor->setLayoutDirection(Qt::LeftToRight);
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    QFrame *const file = makeCard(u"Info.plist"_s);
    file->layout()->addWidget(m_editor);
    file->layout()->addWidget(m_problem);

    QFrame *const window = makeCard(::tr("The about window"));
    auto *const open = new QPushButton(::tr("&Open the Window"));
    static_cast<QVBoxLayout *>(window->layout())->addWidget(m_preview, 1);
    static_cast<QVBoxLayout *>(window->layout())->addWidget(open, 0, Qt::AlignCenter);

    auto *const columns = new QHBoxLayout;
    columns->setSpacing(2 * Theme::unit);
    columns->addWidget(file, 3);
    columns->addWidget(window, 2);
    content()->addLayout(columns, 1);
    content()->addWidget(makeFacts());

    connect(m_editor, &QPlainTextEdit::textChanged, this, [this] { read(); });
    connect(open, &QPushButton::clicked, this, [] {
        // The controller reads the texts only once, so make a new one.
        AboutWindowController::setInstance(nullptr);
        AboutWindowController::show();
    });
    m_editor->setPlainText(example);
}

QFrame *AboutPage::makeFacts()
{
    m_form->setHorizontalSpacing(2 * Theme::unit);
    m_form->setVerticalSpacing(Theme::unit / 2);
    addFact(u"name"_s, &App::name);
    addFact(u"version"_s, &App::version);
    addFact(u"copyright"_s, &App::copyright);
    addFact(u"operatingSystem"_s, &App::operatingSystem);
    addFact(u"deviceModel"_s, &App::deviceModel);
    addFact(u"bundleIdentifier"_s, [] { return NS::Bundle::main().bundleIdentifier(); });
    QFrame *const card = makeCard(::tr("What the program knows"));
    static_cast<QVBoxLayout *>(card->layout())->addLayout(m_form);
    return card;
}

void AboutPage::addFact(const QString &name, std::function<QString()> fact)
{
    auto *const label = new QLabel(name);
    label->setFont(Theme::font(Theme::monospace));
    label->setForegroundRole(QPalette::PlaceholderText);
    auto *const value = new QLabel;
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setAccessibleName(name);
    // The value stands beside its name, even if its text has another direction than the layout.
    auto *const row = new QHBoxLayout;
    row->addWidget(value);
    row->addStretch();
    m_form->addRow(label, row);
    m_facts.append({ value, std::move(fact) });
}

void AboutPage::read()
{
    const QByteArray xml = m_editor->toPlainText().toUtf8();
    try {
        NS::propertyListFromXML(xml, u"Info.plist"_s);
    } catch (const NS::PropertyListError &error) {
        m_problem->setText(QString::fromUtf8(error.what()));
        return;
    }
    m_problem->setText(::tr("Well-formed"));
    m_infoPlist.setContents(xml);
    for (const auto &[label, fact] : std::as_const(m_facts)) {
        const QString text = fact();
        label->setText(text.isEmpty() ? ::tr("(empty)") : text);
    }
    m_preview->showWindow();
}

} // namespace

Page *makeAboutPage(QWidget *parent)
{
    return new AboutPage(parent);
}
