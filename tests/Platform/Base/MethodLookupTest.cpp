// SPDX-License-Identifier: MIT
#include "Base/MethodLookup.h"

#include <QObject>
#include <gmock/gmock.h>

#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

class Document : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE virtual void save(bool) { }
    Q_INVOKABLE void save() { }

Q_SIGNALS:
    void saved(int pages = 0);
};

class Letter : public Document
{
    Q_OBJECT

public:
    Q_INVOKABLE void save(bool) override { }
    Q_INVOKABLE void saved(const QString &, bool) { }
};

// "Document save(bool)"
std::vector<std::string> texts(const QList<QMetaMethod> &methods)
{
    std::vector<std::string> texts;
    for (const QMetaMethod &method : methods) {
        const std::string type = method.enclosingMetaObject()->className();
        texts.push_back(type.substr(type.rfind(':') + 1) + " "
                        + method.methodSignature().toStdString());
    }
    return texts;
}

} // namespace

TEST(MethodLookup, overloads_come_in_the_order_of_declaration_base_classes_first)
{
    const Letter letter;
    EXPECT_THAT(texts(methodsNamed(&letter, "save")),
                ElementsAre("Document save(bool)", "Document save()", "Letter save(bool)"));
    EXPECT_THAT(texts(methodsNamed(&letter, "save()")), IsEmpty());
    EXPECT_THAT(texts({ methodWithSignature(&letter, "save(bool)") }),
                ElementsAre("Letter save(bool)"));
    EXPECT_FALSE(methodWithSignature(&letter, "save(int)").isValid());
}

TEST(MethodLookup, a_text_is_a_name_or_a_signature_with_any_spacing)
{
    const Letter letter;
    EXPECT_EQ(methodsMatching(&letter, u" save "_s), methodsNamed(&letter, "save"));
    EXPECT_THAT(texts(methodsMatching(&letter, u"save ( bool )"_s)),
                ElementsAre("Document save(bool)", "Letter save(bool)"));
    EXPECT_THAT(texts(methodsMatching(&letter, u"saved( const QString & , bool)"_s)),
                ElementsAre("Letter saved(QString,bool)"));
    for (const QString &text : { u""_s, u"sav"_s, u"save(int)"_s, u"(bool)"_s, u"save(bool"_s })
        EXPECT_THAT(texts(methodsMatching(&letter, text)), IsEmpty()) << qPrintable(text);
}

TEST(MethodLookup, signals_leave_other_methods_of_the_name_out)
{
    const Letter letter;
    EXPECT_THAT(texts(signalsMatching(&letter, u"saved"_s)),
                ElementsAre("Document saved(int)", "Document saved()"));
    EXPECT_THAT(texts(signalsMatching(&letter, u"save"_s)), IsEmpty());
}

} // namespace Pellarvine::detail

#include "MethodLookupTest.moc"
