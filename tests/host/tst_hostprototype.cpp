// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CClass.h"
#include "CError.h"
#include "CPrototype.h"
#include "closestname.h"

#include <QTest>

namespace {

// "name(kind name, kind name)", in one fixed spelling.
QString picture(const CPrototype& oPrototype)
{
    QStringList slArguments;
    for (const SArgument& oArgument : oPrototype.arguments()) {
        slArguments << QString::fromLatin1(declaration(oArgument.eKind)) + QLatin1Char(' ')
                + QString::fromStdString(oArgument.sName);
    }
    return QString::fromStdString(oPrototype.name()) + QLatin1Char('(')
        + slArguments.join(QLatin1String(", ")) + QLatin1Char(')');
}

// The error text of what @p fnFails does; empty when it throws no CError.
template <typename Function> QString errorOf(Function fnFails)
{
    try {
        fnFails();
    } catch (const CError& oError) {
        return QString::fromUtf8(oError.what());
    }
    return QString();
}

char gcFunction; // stands for every exported function

CClass makeClass(const std::vector<const char*>& vDescriptor, const std::string& sMissing = std::string())
{
    return CClass(vDescriptor.data(),
        [&](const std::string& sSymbol) -> void* { return sSymbol == sMissing ? nullptr : &gcFunction; });
}

} // namespace

class TestHostPrototype : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPrototypeIsReadIntoNameAndArguments_data()
    {
        QTest::addColumn<QByteArray>("sText");
        QTest::addColumn<QString>("sPicture");
        QTest::newRow("no argument") << QByteArray("void show()") << QStringLiteral("show()");
        QTest::newRow("void as arguments") << QByteArray("void show(void)") << QStringLiteral("show()");
        QTest::newRow("constructor") << QByteArray("CBox(char *pcFirst, char *pcSecond)")
                                     << QStringLiteral("CBox(char* pcFirst, char* pcSecond)");
        QTest::newRow("int") << QByteArray("void select(int iNode)") << QStringLiteral("select(int iNode)");
        QTest::newRow("all kinds") << QByteArray("void f(int i, int* pi, float* pf, char* pc)")
                                   << QStringLiteral("f(int i, int* pi, float* pf, char* pc)");
        QTest::newRow("blanks") << QByteArray("  void  f ( const char  *  pc ,int*pi )  ")
                                << QStringLiteral("f(char* pc, int* pi)");
        QTest::newRow("no names") << QByteArray("void f(int *, int)") << QStringLiteral("f(int* , int )");
        QTest::newRow("name like a type")
            << QByteArray("void f(int integer)") << QStringLiteral("f(int integer)");
    }

    void aPrototypeIsReadIntoNameAndArguments()
    {
        QFETCH(QByteArray, sText);
        QTEST(picture(CPrototype(sText.toStdString())), "sPicture");
    }

    void aPrototypeThatCantBeReadIsQuoted_data()
    {
        QTest::addColumn<QByteArray>("sText");
        for (const char* pcText : {"", "void", "void f", "void f(", "f)", "int f()", "void (int i)",
                 "void f(double d)", "void f(float f)", "void f(char c)", "void f(int i,)", "void f(,int i)",
                 "void f(integer)", "void f(int** ppi)", "void f(int i int j)", "void f(int i) const"}) {
            QTest::addRow("<%s>", pcText) << QByteArray(pcText);
        }
    }

    void aPrototypeThatCantBeReadIsQuoted()
    {
        QFETCH(QByteArray, sText);
        QCOMPARE(errorOf([&] { CPrototype oPrototype(sText.toStdString()); }),
            QStringLiteral("can't read the prototype \"%1\"").arg(QString::fromLatin1(sText)));
    }

    void aPrototypeWithControlCharactersGivesOneLine()
    {
        QCOMPARE(errorOf([] { CPrototype oPrototype("void f(\n\t\x1b[2J\x7f)"); }),
            QStringLiteral("can't read the prototype \"void f(\\n\\t\\x1b[2J\\x7f)\""));
    }

    void anArgumentIsLabelledByNumberAndName()
    {
        const CPrototype oPrototype("void f(int, int iSecond)");
        QCOMPARE(QString::fromStdString(oPrototype.argumentLabel(0)), QStringLiteral("argument 1"));
        QCOMPARE(QString::fromStdString(oPrototype.argumentLabel(1)), QStringLiteral("argument 2 (iSecond)"));
    }

    void aClassJoinsPrefixAndFunctionName()
    {
        const CClass oClass = makeClass({"box_:", "CBox()", "FREE_CBox()", "void show()", nullptr});
        QStringList slSymbols;
        for (const SEntryPoint& oEntry : oClass.entryPoints()) {
            slSymbols << QString::fromStdString(oEntry.sSymbol);
        }
        const QStringList slExpected{
            QStringLiteral("box_CBox"), QStringLiteral("box_FREE_CBox"), QStringLiteral("box_show")};
        QCOMPARE(slSymbols, slExpected);
        QCOMPARE(QString::fromStdString(oClass.name()), QStringLiteral("CBox"));
    }

    void aMissingSymbolIsNamed()
    {
        QCOMPARE(errorOf([] {
            makeClass({"box_:", "CBox()", "FREE_CBox()", nullptr}, "box_FREE_CBox");
        }),
            QStringLiteral("the symbol box_FREE_CBox is missing; \"FREE_CBox()\" needs it"));
    }

    void aDescriptorOfTheWrongShapeIsRefused()
    {
        QCOMPARE(errorOf([] {
            makeClass({"box_", "CBox()", "FREE_CBox()", nullptr});
        }),
            QStringLiteral(
                "a class descriptor begins with \"box_\", which is no symbol prefix with a colon"));
        QCOMPARE(errorOf([] { makeClass({nullptr}); }),
            QStringLiteral("a class descriptor begins with \"\", which is no symbol prefix with a colon"));
        QCOMPARE(errorOf([] {
            makeClass({"box_:", "CBox()", nullptr});
        }),
            QStringLiteral(
                "the descriptor of the class with prefix \"box_:\" lacks the prototype of its constructor "
                "or destructor"));
    }

    void anUnknownMethodSuggestsTheClosest()
    {
        const CClass oClass =
            makeClass({"box_:", "CBox()", "FREE_CBox()", "void show()", "void hide()", nullptr});
        QCOMPARE(errorOf([&] { return oClass.find("shwo"); }),
            QStringLiteral("unknown method \"shwo\"; did you mean \"show\"?"));
        QCOMPARE(errorOf([&] { return oClass.find("HIDE"); }),
            QStringLiteral("unknown method \"HIDE\"; did you mean \"hide\"?"));
    }

    void theDistanceCountsEdits_data()
    {
        QTest::addColumn<QByteArray>("sFrom");
        QTest::addColumn<QByteArray>("sTo");
        QTest::addColumn<int>("iDistance");
        QTest::newRow("equal") << QByteArray("show") << QByteArray("Show") << 0;
        QTest::newRow("insert") << QByteArray("selct") << QByteArray("select") << 1;
        QTest::newRow("replace") << QByteArray("hike") << QByteArray("hide") << 1;
        QTest::newRow("from nothing") << QByteArray("") << QByteArray("abc") << 3;
        QTest::newRow("several") << QByteArray("kitten") << QByteArray("sitting") << 3;
    }

    void theDistanceCountsEdits()
    {
        QFETCH(QByteArray, sFrom);
        QFETCH(QByteArray, sTo);
        QTEST(int(editDistance(sFrom.toStdString(), sTo.toStdString())), "iDistance");
    }
};

QTEST_GUILESS_MAIN(TestHostPrototype)
#include "tst_hostprototype.moc"
