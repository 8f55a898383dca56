// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSResponder.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWidget>
#include <gmock/gmock.h>

#include <stdexcept>

using ::testing::ElementsAre;
using namespace Qt::StringLiterals;

namespace {

// A controller with methods for commands.
class Archive : public NS::ViewController
{
    Q_OBJECT

public:
    using NS::ViewController::ViewController;
    Q_INVOKABLE void archive(QObject *from) { calls.push_back({ "archive", from }); }
    Q_INVOKABLE void archive() { calls.push_back({ "plain", nullptr }); }
    Q_INVOKABLE void edit(QLineEdit *field) { calls.push_back({ "edit", field }); }
    Q_INVOKABLE void count(int number) { calls.push_back({ std::to_string(number), nullptr }); }
    Q_INVOKABLE void fail() { throw std::runtime_error("full"); }

    std::vector<std::pair<std::string, QObject *>> calls;

public Q_SLOTS:
    void print() { calls.push_back({ "print", nullptr }); }

Q_SIGNALS:
    void archived();
};

std::vector<QObject *> chainAfter(QObject *responder)
{
    std::vector<QObject *> chain;
    while (QObject *const next = NS::nextResponder(responder)) {
        responder = next;
        chain.push_back(responder);
    }
    return chain;
}

} // namespace

TEST(Responder, the_chain_leads_outwards_through_controllers_window_and_application)
{
    QWidget window;
    auto *const box = new QWidget(&window);
    NS::ViewController outer;
    outer.view()->setParent(box);
    NS::ViewController inner;
    inner.view()->setParent(outer.view());
    auto *const button = new QPushButton(inner.view());
    EXPECT_THAT(chainAfter(button),
                ElementsAre(inner.view(), &inner, outer.view(), &outer, box, &window, qApp));

    auto controller = std::make_unique<QObject>();
    NS::setWindowController(&window, controller.get());
    EXPECT_THAT(chainAfter(&outer), ElementsAre(box, &window, controller.get(), qApp));
    controller.reset();
    EXPECT_THAT(chainAfter(box), ElementsAre(&window, qApp));
}

TEST(Responder, a_window_that_is_a_view_has_its_view_controller_before_its_window_controller)
{
    QObject windowController;
    NS::ViewController controller;
    EXPECT_THAT(chainAfter(&controller), ElementsAre());
    EXPECT_FALSE(controller.isViewLoaded());
    QWidget owner;
    controller.view()->setParent(&owner, Qt::Dialog);
    NS::setWindowController(controller.view(), &windowController);
    EXPECT_THAT(chainAfter(controller.view()), ElementsAre(&controller, &windowController, qApp));
    EXPECT_THAT(chainAfter(qApp), ElementsAre());
    QObject stranger;
    EXPECT_THAT(chainAfter(&stranger), ElementsAre());
}

TEST(Responder, an_action_calls_the_method_of_its_name_that_takes_the_sender)
{
    using Calls = std::vector<std::pair<std::string, QObject *>>;
    QLineEdit field;
    QObject other;
    const std::tuple<QString, QObject *, Calls> rows[] = {
        { u"archive"_s, &field, { { "archive", &field } } },
        { u"archive"_s, nullptr, { { "archive", nullptr } } },
        { u"print"_s, &field, { { "print", nullptr } } },
        { u"edit"_s, &field, { { "edit", &field } } },
        { u"edit"_s, &other, {} }, // not a line edit
        { u"count"_s, &field, {} },
        { u"archived"_s, &field, {} }, // a signal
        { u"absent"_s, &field, {} },
    };
    for (const auto &[action, sender, calls] : rows) {
        Archive target;
        EXPECT_EQ(NS::sendAction(action, &target, sender), !calls.empty()) << qPrintable(action);
        EXPECT_EQ(target.calls, calls) << qPrintable(action);
    }
    Archive target;
    EXPECT_THROW(NS::sendAction(u"fail"_s, &target, nullptr), std::runtime_error);
}

TEST(Responder, an_action_to_nobody_finds_the_first_who_understands_it)
{
    QWidget window;
    Archive outer;
    outer.view()->setParent(&window);
    Archive inner;
    inner.view()->setParent(outer.view());
    auto *const field = new QLineEdit(inner.view());
    auto *const button = new QPushButton(outer.view());

    // No window is active: the sender is where the chain begins.
    EXPECT_TRUE(NS::sendAction(u"archive"_s, nullptr, button));
    EXPECT_EQ(outer.calls.size(), 1);
    EXPECT_FALSE(NS::sendAction(u"absent"_s, nullptr, button));

    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field->setFocus();
    EXPECT_TRUE(NS::sendAction(u"archive"_s, nullptr, button));
    EXPECT_THAT(inner.calls, ElementsAre(std::pair<std::string, QObject *>("archive", button)));
    EXPECT_EQ(outer.calls.size(), 1);

    field->setText(u"draft"_s);
    EXPECT_TRUE(NS::sendAction(u"selectAll"_s, nullptr, button));
    EXPECT_EQ(field->selectedText(), u"draft"_s);
}

TEST(Responder, an_action_ends_at_a_window_whose_controller_lies_in_it)
{
    QWidget window;
    Archive controller;
    controller.view()->setParent(&window);
    for (QObject *const after : std::initializer_list<QObject *> { &controller, &window }) {
        NS::setWindowController(&window, after);
        EXPECT_FALSE(NS::sendAction(u"absent"_s, nullptr, &window));
        EXPECT_FALSE(NS::sendAction(u"absent"_s, nullptr, controller.view()));
    }
    NS::setWindowController(&window, &controller);
    EXPECT_TRUE(NS::sendAction(u"archive"_s, nullptr, &window));
}

#include "NSResponderTest.moc"
