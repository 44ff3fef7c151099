#include "LeftOverFiles.h"

#include "TempDir.h"

#include <QDir>
#include <QTest>

#include <gtest/gtest.h>

TEST(LeftOverFiles, AreRemovedFromTheFolderAndThoseOfItsDays)
{
    const TempDir folder;
    const QDir root(QString::fromStdString(folder.path()));
    for (const char* name : {"20240131", "20240201", "letters", "2024013101", "2024013a"}) {
        root.mkdir(QLatin1String(name));
        folder.write(std::string(name) + "/.lumro-99-1.tmp", "half a page");
    }
    for (int day = 1; day <= 31; ++day) // as many as are looked at, all older
        root.mkdir(QStringLiteral("202301%1").arg(day, 2, 10, QLatin1Char('0')));
    QFile::link(root.filePath(QStringLiteral("letters")), root.filePath(QStringLiteral("20230501")));
    folder.write(".lumro-99-0.tmp", "half a film");
    folder.write("20240131/IMAGE_000.jpg", "a page");
    const auto filesIn = [&](const char* below) {
        return QDir(root.filePath(QLatin1String(below))).entryList(QDir::Files | QDir::Hidden).size();
    };
    leftOverFiles::removeInBackground(root.path());
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return filesIn(".") + filesIn("20240131") + filesIn("20240201") == 1; }));
    for (const char* own : {"letters", "2024013101", "2024013a"})
        EXPECT_EQ(filesIn(own), 1) << "the user's own folder " << own;
    leftOverFiles::remove(root.filePath(QStringLiteral("missing")));
}
