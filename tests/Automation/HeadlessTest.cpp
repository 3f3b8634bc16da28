#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessara {
namespace {

struct Played
{
    int status = -1;
    QByteArrayList replies;
    QByteArray errors;
};

class HeadlessTest : public testing::Test
{
protected:
    Played play(QStringList arguments, const QByteArray &input = {}) const
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(display);
        program.setProcessEnvironment(environment);
        program.start(HEADLESS_PATH, arguments);
        program.write(input);
        program.closeWriteChannel();
        EXPECT_TRUE(program.waitForFinished(120000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        QByteArrayList replies = program.readAllStandardOutput().split('\n');
        EXPECT_EQ(replies.takeLast(), ""); // the last line is ended, too
        return {program.exitCode(), replies, program.readAllStandardError()};
    }

    Played playManually(const QByteArray &input) const
    {
        return play({"--clock", "manual", "--data", folder.path()}, input);
    }

    QString writtenScript(const QByteArray &text) const
    {
        QFile file(folder.filePath("show.jsonl"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    static bool isReply(const QByteArray &line)
    {
        return QJsonDocument::fromJson(line).object().contains("ok");
    }

    QTemporaryDir folder;
    const QByteArray script = "# a show\n\n{\"id\": 1, \"call\": \"document.addTextLayer\"}\n"
                              "{\"id\": 2, \"get\": \"clock.now\"}\n"
                              "{\"id\": 3, \"call\": \"clock.advance\", \"args\": [600]}\n"
                              "{\"id\": 4, \"get\": \"clock.now\"}";
};

TEST_F(HeadlessTest, AFileAndAPipePlayTheSameShow)
{
    const Played piped = playManually(script);
    const Played read = play({"--clock", "manual", "--data", folder.path(), writtenScript(script)});

    EXPECT_EQ(piped.status, 0);
    EXPECT_EQ(read.status, 0);
    ASSERT_EQ(piped.replies.size(), 4);
    ASSERT_EQ(read.replies.size(), 4);
    EXPECT_EQ(piped.replies[3], R"({"id":4,"ok":true,"result":600})");
    EXPECT_EQ(piped.replies.mid(1), read.replies.mid(1));
}

TEST_F(HeadlessTest, OneFailedRequestIsTheStatusAndTheRunGoesOn)
{
    const Played run = playManually("{\"get\": \"no.thing\"}\nbroken\n{\"get\": \"clock.now\"}\n");

    EXPECT_EQ(run.status, 1);
    ASSERT_EQ(run.replies.size(), 3);
    EXPECT_EQ(run.replies[2], R"({"ok":true,"result":0})");
}

TEST_F(HeadlessTest, AnEmptyShowSucceeds)
{
    EXPECT_EQ(playManually({}).status, 0);
    EXPECT_EQ(play({"--data", folder.path()}).status, 0);
}

TEST_F(HeadlessTest, UnusableArgumentsAreTwoAndSaidOnTheErrorOutput)
{
    for (const QStringList &arguments :
         {QStringList{"--clock", "sundial"}, QStringList{"--nonsense"},
          QStringList{"--data", folder.path(), "one", "two"},
          QStringList{"--data", folder.path(), "/no/such/script"},
          QStringList{"--data", folder.path(), folder.path()}, QStringList{"--clock"}}) {
        const Played run = play(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_TRUE(run.replies.isEmpty());
        EXPECT_FALSE(run.errors.isEmpty());
    }
}

TEST_F(HeadlessTest, NothingButRepliesGoesToStandardOutput)
{
    const Played run = playManually(
        "{\"set\": \"document.size\", \"value\": [64, 36]}\n"
        "{\"call\": \"app.startDeckLinkOutput\"}\n{\"call\": \"clock.advance\", \"args\": [1]}\n"
        "{\"call\": \"card.frames\", \"args\": [0]}\n{\"call\": \"app.stopDeckLinkOutput\"}\n");

    EXPECT_EQ(run.status, 0);
    ASSERT_EQ(run.replies.size(), 5);
    for (const QByteArray &line : run.replies)
        EXPECT_TRUE(isReply(line)) << line.constData();
    EXPECT_TRUE(run.replies[3].contains(R"("sent":51)"));
}

TEST_F(HeadlessTest, TheRealClockMovesByItself)
{
    const Played run = play({"--data", folder.path()},
                            "{\"call\": \"clock.advance\", \"args\": [0.05]}\n"
                            "{\"get\": \"clock.now\"}\n{\"call\": \"clock.setWallClock\", "
                            "\"args\": [\"2026-11-20T20:29:58\"]}\n");

    EXPECT_EQ(run.status, 1);
    ASSERT_EQ(run.replies.size(), 3);
    EXPECT_GE(QJsonDocument::fromJson(run.replies[1]).object().value("result").toDouble(), 0.05);
    EXPECT_TRUE(run.replies[2].contains("only the manual clock can be set"));
}

TEST_F(HeadlessTest, EveryReplyIsFlushedBeforeTheNextRequest)
{
    QProcess program;
    program.start(HEADLESS_PATH, {"--clock", "manual", "--data", folder.path()});
    for (int request = 1; request <= 3; ++request) {
        program.write("{\"get\": \"clock.now\"}\n");
        ASSERT_TRUE(program.waitForReadyRead(60000));
        EXPECT_EQ(program.readLine(), "{\"ok\":true,\"result\":0}\n");
    }
    program.closeWriteChannel();
    EXPECT_TRUE(program.waitForFinished(60000));
    EXPECT_EQ(program.exitCode(), 0);
}

TEST_F(HeadlessTest, HostileLinesAreErrorsAndNeverTheEnd)
{
    QByteArray input = QByteArray(10'000'000, 'x') + '\n';
    input += QByteArray(200'000, '[') + '\n';
    input += QByteArray("\x00\xff\x80\x01 \xf0\x28\n", 8);
    input += "{\"set\": \"document.size\", \"value\": [1e300, NaN]}\n";
    input += "{\"set\": \"document.size\", \"value\": [1e300, 1]}\n";
    input += "{\"call\": \"clock.advance\", \"args\": [1e300]}\n";
    input += "{\"call\": \"frame.make\", \"args\": [\"fill\", 2147483647, 1, \"/tmp/never\"]}\n";

    const Played run = playManually(input + "{\"get\": \"document.size\"}\n");

    EXPECT_EQ(run.status, 1);
    ASSERT_EQ(run.replies.size(), 8);
    for (const QByteArray &line : run.replies)
        EXPECT_TRUE(isReply(line));
    EXPECT_EQ(run.replies.last(), R"({"ok":true,"result":[1920,1080]})");
}

} // namespace
} // namespace tessara
