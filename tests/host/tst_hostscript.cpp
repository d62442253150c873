// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CArena.h"
#include "CArguments.h"
#include "CError.h"
#include "CScriptParser.h"
#include "CVariables.h"
#include "completion.h"

#include <QTest>

namespace {

// The statements of a line as text: name{argument|argument}->variable, each argument evaluated.
QString picture(const QString& sLine, const CVariables& oVariables = CVariables())
{
    QStringList slStatements;
    for (const SStatement& oStatement : CScriptParser::statements(sLine.toStdString())) {
        QStringList slArguments;
        for (const SExpression& oExpression : oStatement.vArguments) {
            const Value oValue = oVariables.evaluate(oExpression);
            const QString sQuote = QString::fromLatin1(std::holds_alternative<SText>(oValue) ? "'" : "");
            slArguments << sQuote + QString::fromStdString(printed(oValue)) + sQuote;
        }
        const QString sArrow = QString::fromLatin1(oStatement.sVariable.empty() ? "" : "->");
        slStatements << QString::fromStdString(oStatement.sName) + QLatin1Char('{')
                + slArguments.join(QLatin1Char('|')) + QLatin1Char('}') + sArrow
                + QString::fromStdString(oStatement.sVariable);
    }
    return slStatements.join(QLatin1Char(' '));
}

QString error(const QString& sLine, const CVariables& oVariables = CVariables())
{
    try {
        return QStringLiteral("no error: ") + picture(sLine, oVariables);
    } catch (const CError& oError) {
        return QString::fromUtf8(oError.what());
    }
}

// The slots of "f argument ..." for the prototype; throws CError.
CArguments arguments(const CPrototype& oPrototype, const QString& sLine, CArena& oArena)
{
    const auto vStatements = CScriptParser::statements(sLine.toStdString());
    std::vector<Value> vValues;
    for (const SExpression& oExpression : vStatements.at(0).vArguments) {
        vValues.push_back(CVariables().evaluate(oExpression));
    }
    return CArguments(oPrototype, vValues, oArena);
}

} // namespace

class TestHostScript : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLineIsReadIntoStatements_data()
    {
        QTest::addColumn<QString>("sLine");
        QTest::addColumn<QString>("sPicture");
        const auto row = [](const char* pcName, const char* pcLine, const char* pcPicture) {
            QTest::newRow(pcName) << QString::fromUtf8(pcLine) << QString::fromUtf8(pcPicture);
        };
        row("blank", "  \t ", "");
        row("comment", "# select 7", "");
        row("no argument", "show", "show{}");
        row("argument", "select 7", "select{7}");
        row("comment behind", "select 7# seven", "select{7}");
        row("carriage return", "select 7\r", "select{7}");
        row("brackets", "select(7)", "select{7}");
        row("empty brackets", "show()", "show{}");
        row("commas", "f 1, 2 ,3 4", "f{1|2|3|4}");
        row("several statements", "a 1; b 2;;c;", "a{1} b{2} c{}");
        row("quoted signs", "f \"a # b; (c) -> [d], $e\"", "f{'a # b; (c) -> [d], $e'}");
        row("escapes", "f \"\\\" \\\\ \\n \\t\"", "f{'\" \\ \n \t'}");
        row("empty text", "f \"\"", "f{''}");
        row("bare words", "f 2004-01-01T00:00:00 a/b.c ü", "f{2004-01-01T00:00:00|a/b.c|ü}");
        row("null", "f null \"null\"", "f{null|'null'}");
        row("arrays", "f [1 2,3] [1.5, 2] []", "f{1 2 3|1.5 2|}");
        row("buffers", "f int[5] char[2*3] float[0]", "f{int[5]|char[6]|float[0]}");
        row("arrow", "f int[1] -> n", "f{int[1]}->n");
        row("arrow without blanks", "f(int[1])->n; g", "f{int[1]}->n g{}");
        row("product", "f 2*3 * 4", "f{24}");
        row("repeat", "f repeat(2, [1 2 3])", "f{1 2 3 1 2 3}");
        row("repeat nothing", "f repeat(0 [1])", "f{}");
        row("ramp", "f ramp(3, [0 10], [1 20])", "f{0 10 0.5 15 1 20}");
        row("ramp of one", "f ramp(1, [3], [9])", "f{3}");
        row("ramp of none", "f ramp(0, [3], [9])", "f{}");
    }

    void aLineIsReadIntoStatements()
    {
        QFETCH(QString, sLine);
        QTEST(picture(sLine), "sPicture");
    }

    void bracketsStandInEachOtherUpToALimit()
    {
        // the statement's own arguments are the first level
        const auto line = [](int iDepth) {
            return QStringLiteral("f ") + QStringLiteral("[").repeated(iDepth - 1)
                + QStringLiteral("]").repeated(iDepth - 1);
        };
        QCOMPARE(error(line(64)), QStringLiteral("element 1 of an array must be a number, got an array"));
        const QString sTooDeep = QStringLiteral("brackets stand more than 64 deep in each other");
        QCOMPARE(error(line(65)), sTooDeep);
        QCOMPARE(error(line(300000)), sTooDeep);
        QCOMPARE(error(QStringLiteral("f ") + QStringLiteral("repeat(").repeated(65)), sTooDeep);
        const QString sMany = QStringLiteral(" [1]").repeated(1000);
        QCOMPARE(CScriptParser::statements((QStringLiteral("f") + sMany).toStdString())[0].vArguments.size(),
            1000);
    }

    void theLargestFloatIsReadAsItIsWritten()
    {
        QCOMPARE(picture(QStringLiteral("f [3.4028235e+38 -3.4028235e+38]")),
            QStringLiteral("f{3.4028235e+38 -3.4028235e+38}"));
    }

    void aVariableStandsWhereverAnArgumentStands()
    {
        CVariables oVariables;
        oVariables.set("n", SWord{"2"});
        oVariables.set("s", SText{"x y"});
        oVariables.set("a", SNumbers{{1, 2}, {}});
        QCOMPARE(picture(QStringLiteral("f $n $s $a [$n 3] int[$n*3] repeat($n, $a) ramp($n, $a, [3 4])"),
                     oVariables),
            QStringLiteral("f{2|'x y'|1 2|2 3|int[6]|1 2 1 2|1 2 3 4}"));
    }

    void aWrongLineIsExplained_data()
    {
        QTest::addColumn<QString>("sLine");
        QTest::addColumn<QString>("sError");
        const auto row = [](const char* pcLine, const char* pcError) {
            QTest::newRow(pcLine) << QString::fromUtf8(pcLine) << QString::fromUtf8(pcError);
        };
        row("\"f\" 1", "a statement begins with a method or a built-in, not with \"f\"");
        row("f \"a", "a text has no closing quote");
        row("f \"a\\", "a text has no closing quote");
        row("f \"\\x\"", "unknown escape \\x in a text; known are \\\" \\\\ \\n \\t");
        row("f \x01", "the line holds a control character");
        row("f $", "$ needs the name of a variable, such as $n");
        row("f $1", "$ needs the name of a variable, such as $n");
        row("f $n", "unknown variable $n");
        row("f 1,", "an argument can't begin with the end of the line");
        row("f ,1", "an argument can't begin with \",\"");
        row("f 1,,2", "an argument can't begin with \",\"");
        row("f \"a\"\"b\"", "a blank or comma is missing before \"b\"");
        row("f [1]2", "a blank or comma is missing before \"2\"");
        row("f(1", "the arguments have no closing \")\"");
        row("f(1) 2", "\"2\" is too much at the end of the statement");
        row("f 1)", "an argument can't begin with \")\"");
        row("f [1", "an array has no closing \"]\"");
        row("f [1 x]", "element 2 of an array must be a number, got text \"x\"");
        row("f [\"1\"]", "element 1 of an array must be a number, got text \"1\"");
        row("f [1e39]", "element 1 of an array must be a number, got text \"1e39\"");
        row("f [3.4028236e38]", "element 1 of an array must be a number, got text \"3.4028236e38\"");
        row("f [nan]", "element 1 of an array must be a number, got text \"nan\"");
        row("f [\"a\\nb\\tc\"]", "element 1 of an array must be a number, got text \"a\\nb\\tc\"");
        row("f 1 -> \"\\n\"", "\"->\" needs the name of a variable, not \"\\n\"");
        row("f long[5]", "\"long[\" begins no result buffer; known are int[N], float[N] and char[N]");
        row("f int[]", "a result buffer needs one length, such as int[5]");
        row("f int[1 2]", "a result buffer needs one length, such as int[5]");
        row("f int[5", "a result buffer has no closing \"]\"");
        row("f int[-1]", "the length of a buffer must not be negative, got -1");
        row("f int[2.5]", "the length of a buffer must be an int, got number 2.5");
        row("f int[99999999999]",
            "the length of a buffer must be an int, got number 99999999999, which is out of range");
        row("f 65536*65536", "a product is out of range");
        row("f fill(2, [1])",
            "\"fill(\" makes no array; known are repeat(N, [...]) and ramp(N, [...], [...])");
        row("f repeat(2)", "repeat needs a count and an array");
        row("f ramp(2, [1])", "ramp needs a count and two arrays");
        row("f ramp(2, [1], [1 2])", "the two tuples of ramp differ in length");
        row("f repeat(2, 1)", "the tuple of repeat must be an array, got number 1");
        row("f repeat(-1, [1])", "the count of repeat must not be negative, got -1");
        row("f repeat(2000000000, [1 2])", "repeat makes an array of more than 2147483647 elements");
        row("f 1 -> 2", "\"->\" needs the name of a variable, not \"2\"");
        row("f 1 ->", "\"->\" needs the name of a variable, not the end of the line");
        row("f 1 -> a b", "\"b\" is too much at the end of the statement");
    }

    void aWrongLineIsExplained()
    {
        QFETCH(QString, sLine);
        QTEST(error(sLine), "sError");
    }

    void argumentsArriveAsTheModuleExpectsThem()
    {
        CArena oArena;
        const CPrototype oPrototype("void f(int i, int iNone, char* pc, int* pi, float* pf, int* piRamp)");
        const CArguments oArguments =
            arguments(oPrototype, QStringLiteral("f -7 null word [1 2] [0.5 3] ramp(3, [0], [5])"), oArena);
        void** ppSlots = oArguments.slots();
        QCOMPARE(*static_cast<int*>(ppSlots[0]), -7);
        QVERIFY(!ppSlots[1]);
        QCOMPARE(static_cast<char*>(ppSlots[2]), "word");
        QCOMPARE(static_cast<int*>(ppSlots[3])[1], 2);
        QCOMPARE(static_cast<float*>(ppSlots[4])[0], 0.5F);
        QCOMPARE(static_cast<int*>(ppSlots[5])[1], 3); // 2.5 rounded
        QVERIFY(oArguments.results().empty());
    }

    void anEmptyArrayIsAPointer()
    {
        CArena oArena;
        QVERIFY(arguments(CPrototype("void f(int* pi)"), QStringLiteral("f []"), oArena).slots()[0]);
    }

    void theExtremeIntsAreRead()
    {
        CArena oArena;
        void** ppSlots = arguments(
            CPrototype("void f(int i, int* pi)"), QStringLiteral("f -2147483648 [2147483647]"), oArena)
                             .slots();
        QCOMPARE(*static_cast<int*>(ppSlots[0]), std::numeric_limits<int>::min());
        QCOMPARE(*static_cast<int*>(ppSlots[1]), std::numeric_limits<int>::max());
    }

    void aBufferStaysWhereItIs()
    {
        CArena oArena;
        char* pcFirst = oArena.text("first");
        for (int i = 0; i < 1000; ++i) {
            oArena.array<int>(100);
        }
        QCOMPARE(pcFirst, "first");
    }

    void resultBuffersAreZeroedAndReadBack()
    {
        CArena oArena;
        const CPrototype oPrototype("void f(int* piOne, int* piTwo, float* pf, char* pc, int*)");
        const CArguments oArguments =
            arguments(oPrototype, QStringLiteral("f int[1] int[2] float[2] char[4] int[0]"), oArena);
        static_cast<int*>(oArguments.slots()[1])[1] = 5;
        static_cast<float*>(oArguments.slots()[2])[0] = 0.25F;
        std::fill_n(static_cast<char*>(oArguments.slots()[3]), 4, 'x'); // no room for a terminating zero
        QStringList slResults;
        for (const auto& oResult : oArguments.results()) {
            slResults << QString::fromStdString(oResult.sName + " = " + printed(oResult.oValue));
        }
        const QStringList slExpected{QStringLiteral("piOne = 0"), QStringLiteral("piTwo = 0 5"),
            QStringLiteral("pf = 0.25 0"), QStringLiteral("pc = xxxx"), QStringLiteral("argument 5 = ")};
        QCOMPARE(slResults, slExpected);
    }

    void theLastWordIsCompleted_data()
    {
        QTest::addColumn<QString>("sLine");
        QTest::addColumn<QString>("sInsert");
        QTest::addColumn<int>("iMatches");
        QTest::newRow("one match") << QStringLiteral("mar") << QStringLiteral("kRow ") << 1;
        QTest::newRow("common beginning") << QStringLiteral("g") << QStringLiteral("et") << 2;
        QTest::newRow("nothing more in common") << QStringLiteral("get") << QString() << 2;
        QTest::newRow("no match") << QStringLiteral("x") << QString() << 0;
        QTest::newRow("second statement") << QStringLiteral("show;mar") << QStringLiteral("kRow ") << 1;
        QTest::newRow("variable") << QStringLiteral("select($r") << QStringLiteral("ows ") << 1;
    }

    void theLastWordIsCompleted()
    {
        QFETCH(QString, sLine);
        QFETCH(QString, sInsert);
        const SCompletion oCompletion =
            complete(sLine.toStdString(), {"getRows", "getDate", "markRow", "$rows"});
        QCOMPARE(QString::fromStdString(oCompletion.sInsert), sInsert);
        QTEST(int(oCompletion.vMatches.size()), "iMatches");
    }
};

QTEST_GUILESS_MAIN(TestHostScript)
#include "tst_hostscript.moc"
