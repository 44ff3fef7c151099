#include "TempDir.h"
#include "TsFile.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTranslator>

#include <algorithm>

namespace {

const QStringList names{QStringLiteral("lumroscanner_zh_cn"),
                        QStringLiteral("lumroscanner_en"),
                        QStringLiteral("lumroscanner_ru")};

QString sourceFile(const QString& name)
{
    return QStringLiteral(SOURCE_FOLDER "/resources/translations/%1.ts").arg(name);
}

std::string label(const QString& name, const TsMessage& message)
{
    return (name + QStringLiteral(", ") + message.context + QStringLiteral(": \"") + message.source +
            QStringLiteral("\" -> \"") + message.translation + QLatin1Char('"'))
        .toStdString();
}

// The "%1", "%2", "%n" of a text, sorted.
QStringList places(const QString& text)
{
    QStringList found;
    auto matches = QRegularExpression(QStringLiteral("%L?(\\d|n)")).globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured());
    std::sort(found.begin(), found.end());
    return found;
}

/// Without blanks, colon and keyboard hint.
QString bare(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("\\(&\\w\\)|[&:：\\s]")));
}

constexpr const char* advice = "run scripts/update-translations.sh and translate what is new";

bool isAscii(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 128; });
}

} // namespace

TEST(Translations, AreFinishedAndKeepWhatTheProgramNeeds)
{
    const QRegularExpression filter(QStringLiteral("\\*\\.\\w+")); // a type of file that is offered
    for (const QString& name : names) {
        const QVector<TsMessage> messages = readTsFile(sourceFile(name));
        EXPECT_FALSE(messages.isEmpty()) << qPrintable(name);
        for (const TsMessage& message : messages) {
            SCOPED_TRACE(label(name, message));
            EXPECT_EQ(message.state, QString());
            EXPECT_FALSE(message.forms.isEmpty());
            for (const QString& form : message.forms) {
                EXPECT_FALSE(form.trimmed().isEmpty());
                EXPECT_EQ(places(message.source), places(form));
            }
            for (auto wanted = filter.globalMatch(message.source); wanted.hasNext();)
                EXPECT_TRUE(message.translation.contains(wanted.next().captured()));
            const QString ending = message.translation.trimmed().right(1);
            EXPECT_EQ(message.source.trimmed().endsWith(QLatin1Char(':')),
                      ending == QLatin1String(":") || ending == QStringLiteral("："));
            const bool isEnglish = name == names[1];
            EXPECT_TRUE(!isEnglish || isAscii(message.translation));
            EXPECT_TRUE(!isEnglish || !isAscii(message.source) || message.counts ||
                        message.translation == message.source);
        }
    }
}

// What has one name on a button is looked for by that name in dialogs and messages.
TEST(Translations, NameOneThingAlike)
{
    const std::vector<std::vector<const char*>> things{
        {"FunctionButtons/Continuous shooting",
         "ConfigSet/Co&ntinuous shooting",
         "SetAutoPage/Continuous shooting"},
        {"SetAutoPage/AutoScan", "ScanControl/Auto Scan"},
        {"SetAutoPage/TimerScan", "ScanControl/Timer Scan"},
        {"FunctionButtons/Capture", "SetShortcut/Scanner:", "PdfEx/Scanner"},
        {"FunctionButtons/Document", "SetShortcut/Document:"},
        {"FunctionButtons/Scan book", "SetShortcut/Book:"},
        {"FunctionButtons/Merge images", "ImageMerge/Image Merge"},
        {"FunctionButtons/Record video", "VideoRecord/Video Record"},
        {"FunctionButtons/Make PDF", "PdfEx/Pdf"},
        {"FunctionButtons/Multi-page PDF", "PdfEx/PDFEX"}};
    for (const QString& name : {names[0], names[2]}) {
        QHash<QString, QString> byPlace, bySource;
        for (const TsMessage& message : readTsFile(sourceFile(name))) {
            byPlace[message.context + QLatin1Char('/') + message.source] = bare(message.translation);
            QString& first = bySource[message.source + message.comment];
            if (first.isEmpty())
                first = message.translation;
            EXPECT_EQ(message.translation, first) << label(name, message);
        }
        for (const auto& thing : things) {
            for (const char* place : thing)
                EXPECT_EQ(byPlace.value(QLatin1String(place), QStringLiteral("no such text")),
                          byPlace.value(QLatin1String(thing.front())))
                    << place;
        }
    }
}

// The pictures of the buttons have less room: a part of the name.
TEST(Translations, HoldTheCaptionsOfTheButtons)
{
    for (const auto& [column, name] : {std::pair{2, names[0]}, std::pair{4, names[1]}}) {
        QFile captions(QStringLiteral(SOURCE_FOLDER "/resources/captions.csv"));
        ASSERT_TRUE(captions.open(QIODevice::ReadOnly));
        ASSERT_TRUE(captions.readLine().startsWith("identifier,source,zh,hk,en,"));
        for (const TsMessage& message : readTsFile(sourceFile(name))) {
            if (message.context != QLatin1String("FunctionButtons"))
                continue;
            const QString caption =
                bare(QString::fromUtf8(captions.readLine()).section(QLatin1Char(','), column, column));
            EXPECT_TRUE(!caption.isEmpty() &&
                        bare(message.translation).contains(caption, Qt::CaseInsensitive))
                << label(name, message);
        }
        EXPECT_TRUE(captions.atEnd());
    }
}

TEST(Translations, CoverEveryTextOfTheSources)
{
    const TempDir folder;
    const QString copies = QString::fromStdString(folder.path());
    for (const QString& name : names)
        ASSERT_TRUE(QFile::copy(sourceFile(name), copies + QLatin1Char('/') + name + QStringLiteral(".ts")));
    QProcess update;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LUPDATE"), QStringLiteral(LUPDATE));
    update.setProcessEnvironment(environment);
    update.setProcessChannelMode(QProcess::MergedChannels);
    update.start(QStringLiteral(SOURCE_FOLDER "/scripts/update-translations.sh"), {copies});
    ASSERT_TRUE(update.waitForFinished(120000));
    ASSERT_EQ(update.exitCode(), 0) << update.readAll().toStdString();
    for (const QString& name : names) {
        const QVector<TsMessage> messages =
            readTsFile(copies + QLatin1Char('/') + name + QStringLiteral(".ts"));
        EXPECT_FALSE(messages.isEmpty());
        EXPECT_EQ(messages.size(), readTsFile(sourceFile(name)).size()) << "texts came or went: " << advice;
        for (const TsMessage& message : messages)
            EXPECT_TRUE(message.state.isEmpty()) << label(name, message) << " is new: " << advice;
    }
}

TEST(Translations, AreCompiledForTheProgram)
{
    for (const QString& name : names) {
        QTranslator translator;
        ASSERT_TRUE(translator.load(name, QStringLiteral(TRANSLATIONS_FOLDER))) << qPrintable(name);
        for (const TsMessage& message : readTsFile(sourceFile(name))) {
            const int one = message.counts ? 1 : -1;
            EXPECT_EQ(translator.translate(
                          message.context.toUtf8(), message.source.toUtf8(), message.comment.toUtf8(), one),
                      message.translation)
                << label(name, message);
        }
    }
}

TEST(Translations, CountAsTheLanguageDoes)
{
    const auto deleted = [](const QString& name, int count) {
        QTranslator translator;
        EXPECT_TRUE(translator.load(name, QStringLiteral(TRANSLATIONS_FOLDER)));
        return translator.translate("ThumbnailDeletion", "%n file(s) deleted", nullptr, count);
    };
    EXPECT_EQ(deleted(names[0], 12), QStringLiteral("已删除 %n 个文件"));
    EXPECT_EQ(deleted(names[1], 1), QStringLiteral("%n file deleted"));
    EXPECT_EQ(deleted(names[1], 12), QStringLiteral("%n files deleted"));
    EXPECT_EQ(deleted(names[2], 21), QStringLiteral("Удалён %n файл"));
    EXPECT_EQ(deleted(names[2], 3), QStringLiteral("Удалено %n файла"));
    EXPECT_EQ(deleted(names[2], 12), QStringLiteral("Удалено %n файлов"));
}
