// A script played in-process, on the manual clock.
#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "Automation/ScriptEngine.h"
#include "Base/ManualClock.h"
#include "Core/AppState.h"
#include "DeckLink/DeckLinkAPIDispatch.h"
#include "DeckLink/VirtualCard.h"
#include "Rendering/ApplicationFonts.h"

#include <gtest/gtest.h>

namespace tessara {

inline QByteArray jsonText(const QJsonValue &value)
{
    // Only a document has a text: the value is wrapped, and the brackets taken off again.
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).mid(1).chopped(1);
}

inline QJsonValue jsonValue(const QByteArray &text)
{
    return QJsonDocument::fromJson('[' + text + ']').array().at(0);
}

class ScriptTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        useDeckLinkLibrary(QStringLiteral(VIRTUAL_CARD_PATH));
        loadApplicationFonts();
    }

    static VirtualCard preparedCard()
    {
        const std::optional<VirtualCard> card = VirtualCard::find();
        if (!card)
            qFatal("No virtual card at %s", VIRTUAL_CARD_PATH);
        card->reset();
        card->setFreeRunning(true);
        const QString channel =
            QStringLiteral("tessara-test-%1").arg(QCoreApplication::applicationPid());
        EXPECT_TRUE(card->setChannel(channel));
        return *card;
    }

    ~ScriptTest() override { card.reset(); }

    QJsonObject reply(const QByteArray &line)
    {
        const std::optional<QByteArray> text = engine.answerLine(line);
        EXPECT_TRUE(text.has_value()) << line.left(200).constData();
        EXPECT_FALSE(text.value_or(QByteArray()).contains('\n'));
        return QJsonDocument::fromJson(text.value_or(QByteArray())).object();
    }

    QJsonValue result(const QByteArray &line)
    {
        const QJsonObject answer = reply(line);
        EXPECT_TRUE(answer.value("ok").toBool())
            << line.left(200).constData() << ": " << answer.value("error").toString().toStdString();
        return answer.value("result");
    }

    /// The text of the error, and nothing in the document has changed.
    std::string error(const QByteArray &line)
    {
        const QByteArray before = jsonText(result(R"({"get": "document.state"})"));
        const QJsonObject answer = reply(line);
        EXPECT_FALSE(answer.value("ok").toBool(true)) << line.left(200).constData();
        EXPECT_FALSE(answer.contains("result"));
        EXPECT_EQ(jsonText(result(R"({"get": "document.state"})")), before);
        return answer.value("error").toString().toStdString();
    }

    QJsonValue call(const QByteArray &operation, const QByteArray &arguments = "[]")
    {
        return result(R"({"call": ")" + operation + R"(", "args": )" + arguments + '}');
    }

    std::string callError(const QByteArray &operation, const QByteArray &arguments = "[]")
    {
        return error(R"({"call": ")" + operation + R"(", "args": )" + arguments + '}');
    }

    QByteArray get(const QByteArray &property)
    {
        return jsonText(result(R"({"get": ")" + property + R"("})"));
    }

    void set(const QByteArray &property, const QByteArray &value)
    {
        result(R"({"set": ")" + property + R"(", "value": )" + value + '}');
    }

    std::string setError(const QByteArray &property, const QByteArray &value)
    {
        return error(R"({"set": ")" + property + R"(", "value": )" + value + '}');
    }

    QByteArray addLayer(const QByteArray &operation, const QByteArray &arguments = "[]")
    {
        return "layer:" + call("document." + operation, arguments).toString().toLatin1();
    }

    QString pathOf(const QString &name) const { return folder.filePath(name); }
    QByteArray bytesOf(const QString &name) const
    {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    QTemporaryDir folder;
    VirtualCard card = preparedCard();
    ManualClock clock;
    AppState app{clock, ApplicationSupport(folder.path())};
    ScriptEngine engine{app};
};

} // namespace tessara
