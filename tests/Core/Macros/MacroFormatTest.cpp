#include "Core/Macros/MacroFormat.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <limits>

namespace tessara {
namespace {

const QString idText = QStringLiteral("6C0A3B5E-1D2F-4A68-9B7C-0123456789AB");
const QUuid id = QUuid::fromString(idText);

MacroStep stepOf(const MacroStep::Kind &kind)
{
    return {id, kind};
}

Macro macroOf(const QList<MacroStep> &steps)
{
    return {.id = id, .name = QStringLiteral("Opening"), .steps = steps, .scheduleTime = {}};
}

/// One step of each kind.
Macro fullMacro()
{
    Macro macro = macroOf(
        {stepOf(ShowLayer{id, QStringLiteral("Title")}),
         stepOf(HideLayer{id, QStringLiteral("Bug")}), stepOf(Pause{1.5}),
         stepOf(SetLayerProperty{id, QStringLiteral("Title"), QStringLiteral("opacity"),
                                 QStringLiteral("0.5000")}),
         stepOf(AddLayer{
             id, QStringLiteral("text"), {{QStringLiteral("text"), QStringLiteral("Hello")}}})});
    macro.loopEnabled = true;
    macro.loopCount = 3;
    macro.scheduleEnabled = true;
    macro.scheduleTime = QStringLiteral("20:15:00");
    return macro;
}

QJsonArray jsonOf(const QList<Macro> &macros)
{
    return QJsonDocument::fromJson(encodeMacros(macros).value_or(QByteArray())).array();
}

/// What is written of one step's kind.
QJsonObject kindJson(const MacroStep::Kind &kind)
{
    const QJsonObject macro = jsonOf({macroOf({stepOf(kind)})}).at(0).toObject();
    return macro[QStringLiteral("steps")][0][QStringLiteral("kind")].toObject();
}

/// A file with one macro, whose fields are those of `fields` beside the required ones.
QByteArray fileWith(const QByteArray &fields, const QByteArray &steps = "[]")
{
    return R"([{"id":")" + idText.toLatin1() + R"(","name":"Opening","steps":)" + steps + fields
           + "}]";
}

/// The kind of the one step of a file, or nothing if the file can't be read.
std::optional<MacroStep::Kind> decodeKind(QByteArray kind)
{
    kind.replace("@ID", '"' + idText.toLatin1() + '"');
    const auto macros = decodeMacros(
        fileWith({}, R"([{"id":")" + idText.toLatin1() + R"(","kind":)" + kind + "}]"));
    return macros ? std::optional(macros->at(0).steps.at(0).kind) : std::nullopt;
}

/// The macros of a file that holds `value` instead of what is written under `path`; a value of
/// nothing removes the key.
std::optional<QList<Macro>> decodeWith(const QStringList &path, const QJsonValue &value)
{
    const auto replaced = [&value](auto &&self, const QJsonValue &in, QStringList rest) {
        if (rest.isEmpty())
            return value;
        const QString head = rest.takeFirst();
        bool isIndex = false;
        const int index = head.toInt(&isIndex);
        if (isIndex) {
            QJsonArray array = in.toArray();
            array[index] = self(self, array.at(index), rest);
            return QJsonValue(array);
        }
        QJsonObject object = in.toObject();
        EXPECT_TRUE(object.contains(head)) << head.toStdString();
        object[head] = self(self, object.value(head), rest); // undefined removes
        return QJsonValue(object);
    };
    const QJsonValue json = replaced(replaced, jsonOf({fullMacro()}), path);
    return decodeMacros(QJsonDocument(json.toArray()).toJson());
}

const QList<QJsonValue> allTypes = {
    QJsonValue(),        QJsonValue(true), QJsonValue(7), QJsonValue(0.5),
    QStringLiteral("x"), QJsonArray{1},    QJsonObject{}, QJsonValue(QJsonValue::Undefined)};

TEST(MacroFormatTest, WhatIsWrittenIsReadBack)
{
    const QList<Macro> macros = {fullMacro(), macroOf({}), fullMacro()};

    EXPECT_EQ(decodeMacros(encodeMacros(macros).value()), macros);
    EXPECT_EQ(decodeMacros(encodeMacros({}).value()), QList<Macro>());
}

TEST(MacroFormatTest, NoMacrosAreAnEmptyArray)
{
    EXPECT_EQ(encodeMacros({}), QByteArray("[]"));
}

TEST(MacroFormatTest, AllFieldsOfAMacroAreWritten)
{
    const QJsonObject expected{{QStringLiteral("id"), idText},
                               {QStringLiteral("name"), QStringLiteral("Opening")},
                               {QStringLiteral("steps"), QJsonArray()},
                               {QStringLiteral("loopEnabled"), false},
                               {QStringLiteral("loopCount"), 0},
                               {QStringLiteral("scheduleEnabled"), false},
                               {QStringLiteral("scheduleTime"), QString()}};

    EXPECT_EQ(jsonOf({macroOf({})}), QJsonArray{expected});
}

TEST(MacroFormatTest, AStepIsWrittenWithItsIDAndItsKind)
{
    const QJsonArray written = jsonOf({macroOf({stepOf(Pause{2})})});

    const QJsonObject kind{{QStringLiteral("type"), QStringLiteral("pause")},
                           {QStringLiteral("seconds"), 2}};
    EXPECT_EQ(written[0][QStringLiteral("steps")],
              QJsonValue(QJsonArray{
                  QJsonObject{{QStringLiteral("id"), idText}, {QStringLiteral("kind"), kind}}}));
}

TEST(MacroFormatTest, EachKindIsWrittenWithItsOwnKeys)
{
    EXPECT_EQ(kindJson(ShowLayer{id, QStringLiteral("Title")}),
              (QJsonObject{{QStringLiteral("type"), QStringLiteral("show")},
                           {QStringLiteral("layerID"), idText},
                           {QStringLiteral("layerName"), QStringLiteral("Title")}}));
    EXPECT_EQ(kindJson(HideLayer{id, {}}),
              (QJsonObject{{QStringLiteral("type"), QStringLiteral("hide")},
                           {QStringLiteral("layerID"), idText},
                           {QStringLiteral("layerName"), QString()}}));
    EXPECT_EQ(kindJson(Pause{0.25}), (QJsonObject{{QStringLiteral("type"), QStringLiteral("pause")},
                                                  {QStringLiteral("seconds"), 0.25}}));
    EXPECT_EQ(kindJson(SetLayerProperty{id, QStringLiteral("Title"), QStringLiteral("posX"),
                                        QStringLiteral("1.00")}),
              (QJsonObject{{QStringLiteral("type"), QStringLiteral("setProp")},
                           {QStringLiteral("layerID"), idText},
                           {QStringLiteral("layerName"), QStringLiteral("Title")},
                           {QStringLiteral("key"), QStringLiteral("posX")},
                           {QStringLiteral("value"), QStringLiteral("1.00")}}));
}

TEST(MacroFormatTest, PropsAreWrittenAsATextThatHoldsJSON)
{
    const QJsonObject written = kindJson(
        AddLayer{id, QStringLiteral("text"), {{QStringLiteral("text"), QStringLiteral("\"ü\"")}}});

    EXPECT_EQ(written,
              (QJsonObject{{QStringLiteral("type"), QStringLiteral("add")},
                           {QStringLiteral("layerID"), idText},
                           {QStringLiteral("layerType"), QStringLiteral("text")},
                           {QStringLiteral("props"), QStringLiteral(R"({"text":"\"ü\""})")}}));
    EXPECT_EQ(kindJson(AddLayer{id, {}, {}})[QStringLiteral("props")], QStringLiteral("{}"));
}

TEST(MacroFormatTest, APauseThatIsNotFiniteIsNotWritten)
{
    for (const double seconds :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(encodeMacros({macroOf({}), macroOf({stepOf(Pause{seconds})})})) << seconds;
}

TEST(MacroFormatTest, EveryFinitePauseIsReadBack)
{
    for (const double seconds : {0.0, -5.0, 0.1, 1e-300, 5e-324, 86400.0 * 365, 1e308,
                                 std::numeric_limits<double>::max()}) {
        const QList<Macro> macros = {macroOf({stepOf(Pause{seconds})})};
        EXPECT_EQ(decodeMacros(encodeMacros(macros).value()), macros) << seconds;
    }
}

TEST(MacroFormatTest, EveryLoopCountIsReadBack)
{
    for (const qint64 count :
         {qint64(-1), qint64(1) << 53, (qint64(1) << 53) + 1, std::numeric_limits<qint64>::min(),
          std::numeric_limits<qint64>::max()}) {
        Macro macro = macroOf({});
        macro.loopCount = count;
        EXPECT_EQ(decodeMacros(encodeMacros({macro}).value()), QList<Macro>{macro}) << count;
    }
}

TEST(MacroFormatTest, AMacroNeedsNoMoreThanItsIDItsNameAndItsSteps)
{
    EXPECT_EQ(decodeMacros(fileWith({})), QList<Macro>{macroOf({})});
}

TEST(MacroFormatTest, WhatIsUnknownIsPassedOver)
{
    EXPECT_EQ(decodeMacros(fileWith(R"(,"color":{"red":1},"Name":3)")), QList<Macro>{macroOf({})});
    EXPECT_EQ(decodeKind(R"({"type":"hide","layerID":@ID,"layerName":"","seconds":"x","key":4})"),
              MacroStep::Kind(HideLayer{id, {}}));
}

TEST(MacroFormatTest, ARequiredKeyThatIsMissingOrOfAnotherTypeFailsTheFile)
{
    const std::pair<QString, QJsonValue::Type> required[] = {
        {QStringLiteral("0"), QJsonValue::Object},
        {QStringLiteral("0/name"), QJsonValue::String},
        {QStringLiteral("0/steps"), QJsonValue::Array},
        {QStringLiteral("0/steps/0"), QJsonValue::Object},
        {QStringLiteral("0/steps/0/kind"), QJsonValue::Object},
        {QStringLiteral("0/steps/0/kind/type"), QJsonValue::String},
        {QStringLiteral("0/steps/0/kind/layerName"), QJsonValue::String},
        {QStringLiteral("0/steps/1/kind/layerName"), QJsonValue::String},
        {QStringLiteral("0/steps/2/kind/seconds"), QJsonValue::Double},
        {QStringLiteral("0/steps/3/kind/layerName"), QJsonValue::String},
        {QStringLiteral("0/steps/3/kind/key"), QJsonValue::String},
        {QStringLiteral("0/steps/3/kind/value"), QJsonValue::String},
        {QStringLiteral("0/steps/4/kind/layerType"), QJsonValue::String}};
    for (const auto &[path, type] : required) {
        for (const QJsonValue &value : allTypes) {
            if (value.type() == type)
                continue;
            EXPECT_FALSE(decodeWith(path.split(QLatin1Char('/')), value))
                << path.toStdString() << ' ' << value.type();
        }
    }
}

TEST(MacroFormatTest, AnIDThatIsMissingOrMalformedFailsTheFile)
{
    const QStringList bad = {QString(),
                             QStringLiteral("x"),
                             QLatin1Char('{') + idText + QLatin1Char('}'),
                             idText + QLatin1Char('0'),
                             QLatin1Char(' ') + idText,
                             idText.chopped(1),
                             QString(idText).remove(QLatin1Char('-')),
                             QString(idText).replace(0, 1, QLatin1Char('G')),
                             QStringLiteral("urn:uuid:") + idText};
    for (const char *path :
         {"0/id", "0/steps/0/id", "0/steps/0/kind/layerID", "0/steps/1/kind/layerID",
          "0/steps/3/kind/layerID", "0/steps/4/kind/layerID"}) {
        const QStringList parts = QString::fromLatin1(path).split(QLatin1Char('/'));
        for (const QJsonValue &value : allTypes)
            EXPECT_FALSE(decodeWith(parts, value)) << path << ' ' << value.type();
        for (const QString &text : bad)
            EXPECT_FALSE(decodeWith(parts, text)) << path << ' ' << text.toStdString();
        EXPECT_TRUE(decodeWith(parts, idText)) << path;
    }
}

TEST(MacroFormatTest, AnIDIsReadInAnyCase)
{
    const auto macros = decodeWith({QStringLiteral("0"), QStringLiteral("id")}, idText.toLower());

    ASSERT_TRUE(macros);
    EXPECT_EQ(macros->at(0).id, id);
}

TEST(MacroFormatTest, TheNullIDIsAnID)
{
    const QString null = QStringLiteral("00000000-0000-0000-0000-000000000000");

    EXPECT_TRUE(decodeWith({QStringLiteral("0"), QStringLiteral("id")}, null));
    EXPECT_EQ(jsonOf({Macro{}})[0][QStringLiteral("id")], null);
}

TEST(MacroFormatTest, AnOptionalKeyOfAnotherTypeHasItsDefault)
{
    const Macro defaults;
    for (const QJsonValue &value : allTypes) {
        const auto read = [&value](const char *key) {
            return decodeWith({QStringLiteral("0"), QString::fromLatin1(key)}, value).value().at(0);
        };
        if (!value.isBool()) {
            EXPECT_EQ(read("loopEnabled").loopEnabled, defaults.loopEnabled);
            EXPECT_EQ(read("scheduleEnabled").scheduleEnabled, defaults.scheduleEnabled);
        }
        if (value != QJsonValue(7)) {
            EXPECT_EQ(read("loopCount").loopCount, defaults.loopCount) << value.type();
        }
        if (!value.isString()) {
            EXPECT_EQ(read("scheduleTime").scheduleTime, defaults.scheduleTime);
        }
    }
}

TEST(MacroFormatTest, ALoopCountThatIsNoIntegerIsNone)
{
    const std::pair<const char *, qint64> counts[] = {
        {"3", 3},     {"-3", -3},    {"3.0", 3},   {"3e2", 300},
        {"3.5", 0},   {"1e-300", 0}, {"1e308", 0}, {"9223372036854775808", 0},
        {"\"3\"", 0}, {"null", 0}};
    for (const auto &[text, count] : counts) {
        const auto macros = decodeMacros(fileWith(QByteArray(",\"loopCount\":") + text));
        ASSERT_TRUE(macros) << text;
        EXPECT_EQ(macros->at(0).loopCount, count) << text;
    }
}

TEST(MacroFormatTest, AStepOfAnUnknownTypeIsAPause)
{
    for (const char *type : {"pause", "", "Show", "setprop", "wait"}) {
        const auto kind = decodeKind(R"({"type":")" + QByteArray(type) + R"(","seconds":2})");
        EXPECT_EQ(kind, MacroStep::Kind(Pause{2})) << type;
    }
    EXPECT_EQ(kindJson(*decodeKind(R"({"type":"wait","seconds":2})")),
              (QJsonObject{{QStringLiteral("type"), QStringLiteral("pause")},
                           {QStringLiteral("seconds"), 2}}));
}

TEST(MacroFormatTest, AStepOfAnUnknownTypeWithoutSecondsFailsTheFile)
{
    EXPECT_FALSE(decodeKind(R"({"type":"pause"})"));
    EXPECT_FALSE(decodeKind(R"({"type":"wait","layerID":@ID,"layerName":"Title"})"));
    EXPECT_FALSE(decodeKind(R"({"type":"wait","seconds":"2"})"));
    EXPECT_FALSE(decodeKind(R"({"seconds":2})"));
}

TEST(MacroFormatTest, AKnownTypeIsNeverAPause)
{
    for (const char *type : {"show", "hide", "setProp", "add"})
        EXPECT_FALSE(decodeKind(R"({"type":")" + QByteArray(type) + R"(","seconds":2})")) << type;
}

TEST(MacroFormatTest, PropsAreReadFromTheirText)
{
    const auto kind = decodeKind(
        R"({"type":"add","layerID":@ID,"layerType":"text","props":"{\"text\":\"Hello\",\"a\":\"\"}"})");

    EXPECT_EQ(kind, MacroStep::Kind(AddLayer{id,
                                             QStringLiteral("text"),
                                             {{QStringLiteral("text"), QStringLiteral("Hello")},
                                              {QStringLiteral("a"), QString()}}}));
}

TEST(MacroFormatTest, BrokenPropsAreNone)
{
    const MacroStep::Kind empty = AddLayer{id, QStringLiteral("text"), {}};
    EXPECT_EQ(decodeKind(R"({"type":"add","layerID":@ID,"layerType":"text"})"), empty);
    for (const char *props :
         {R"("")", R"("no JSON")", R"("[]")", R"("[\"a\",\"b\"]")", R"("\"text\"")", R"("null")",
          R"("{\"a\":\"b\"")", R"("{\"a\":\"b\"} x")", R"("{\"a\":\"b\",\"c\":1}")",
          R"("{\"a\":null}")", R"({"a":"b"})", "null", "7", "true", "[]"}) {
        EXPECT_EQ(decodeKind(R"({"type":"add","layerID":@ID,"layerType":"text","props":)"
                             + QByteArray(props) + '}'),
                  empty)
            << props;
    }
}

TEST(MacroFormatTest, OnlyAnArrayIsAFile)
{
    const QByteArray macro = fileWith({}).mid(1).chopped(1);
    ASSERT_TRUE(decodeMacros('[' + macro + ']'));
    for (const QByteArray &json :
         {QByteArray(), QByteArray("null"), QByteArray("{}"), QByteArray("7"), QByteArray("[7]"),
          QByteArray("[[]]"), QByteArray("[null]"), macro, '[' + macro + "]]", '[' + macro + ",]",
          '[' + macro + ",{}]", QByteArray("\0[]", 3), QByteArray("\xff\xfe[\0]\0", 6)})
        EXPECT_FALSE(decodeMacros(json)) << json.constData();
}

TEST(MacroFormatTest, AFileCutShortIsNoFile)
{
    const QByteArray whole = encodeMacros({fullMacro()}).value();
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(decodeMacros(whole.first(length))) << length;
}

TEST(MacroFormatTest, ANumberBeyondADoubleIsNoNumber)
{
    EXPECT_EQ(decodeKind(R"({"type":"pause","seconds":1e308})"), MacroStep::Kind(Pause{1e308}));
    for (const char *seconds : {"1e999", "-1e999", "NaN", "nan", "Infinity", "inf", "\"NaN\""})
        EXPECT_FALSE(decodeKind(R"({"type":"pause","seconds":)" + QByteArray(seconds) + '}'))
            << seconds;
}

TEST(MacroFormatTest, NestingIsReadToABoundedDepth)
{
    const auto nested = [](int depth) { return QByteArray(depth, '[') + QByteArray(depth, ']'); };

    EXPECT_TRUE(decodeMacros(fileWith(",\"extra\":" + nested(500))));
    EXPECT_FALSE(decodeMacros(fileWith(",\"extra\":" + nested(1'000'000))));
    EXPECT_FALSE(decodeMacros(QByteArray(1'000'000, '[')));
    const QByteArray deepProps = '"' + nested(100'000) + '"';
    EXPECT_EQ(
        decodeKind(R"({"type":"add","layerID":@ID,"layerType":"text","props":)" + deepProps + '}'),
        MacroStep::Kind(AddLayer{id, QStringLiteral("text"), {}}));
}

TEST(MacroFormatTest, ALongTextIsReadBack)
{
    const QString text(10'000'000, QLatin1Char('x'));
    Macro macro = macroOf({stepOf(SetLayerProperty{id, text, text, text}),
                           stepOf(AddLayer{id, text, {{text, text}}})});
    macro.name = text;

    EXPECT_TRUE(decodeMacros(encodeMacros({macro}).value()) == QList<Macro>{macro});
}

TEST(MacroFormatTest, AMillionStepsAreRead)
{
    constexpr int count = 1'000'000;
    const QByteArray step =
        R"({"id":")" + idText.toLatin1() + R"(","kind":{"type":"pause","seconds":0.5}})";

    const auto macros =
        decodeMacros(fileWith({}, '[' + (step + ',').repeated(count - 1) + step + ']'));

    ASSERT_TRUE(macros);
    EXPECT_EQ(macros->at(0).steps.size(), count);
    EXPECT_EQ(macros->at(0).pauseTotal(), count * 0.5);
}

TEST(MacroFormatTest, EveryCharacterIsReadBack)
{
    QString text = QStringLiteral("\"\\/\b\f\n\r\t\u007f\u2028🎬");
    text += QChar(u'\0');
    text += QChar(0xdc00); // half a character, the wrong half first
    text += QChar(0xd800);
    const QList<Macro> macros = {
        macroOf({stepOf(ShowLayer{id, text}), stepOf(AddLayer{id, text, {{text, text}}})})};

    EXPECT_EQ(decodeMacros(encodeMacros(macros).value()), macros);
}

TEST(MacroFormatTest, BytesThatAreNoTextFailTheFile)
{
    EXPECT_FALSE(decodeMacros(fileWith(",\"extra\":\"\xff\"")));
    EXPECT_FALSE(decodeMacros(fileWith(",\"extra\":\"\xed\xa0\x80\"")));
}

} // namespace
} // namespace tessara
