// What becomes of the user's files when they are deleted, brought back and replaced.
#include "DeletedFiles.h"

#include "LeftOvers.h"
#include "TempDir.h"

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <sys/resource.h>

using testing::ElementsAre;

namespace {

class DeletedFilesTest : public ::testing::Test
{
protected:
    QString path(const char* name) const { return QString::fromStdString(folder_.file(name)); }
    bool take(const char* name) { return deleted_->take(path(name)); }
    std::string putBack(const char* name) { return deleted_->putBack(path(name)).toStdString(); }

    TempDir folder_;
    std::optional<DeletedFiles> deleted_{std::in_place};
};

TEST_F(DeletedFilesTest, ComeBackNewestFirstUnderTheirNameOrOneOfTheirOwn)
{
    folder_.write("page.jpg", "old");
    ASSERT_TRUE(take("page.jpg"));
    folder_.write("page.jpg", "new");
    ASSERT_TRUE(take("page.jpg"));
    folder_.write("notes", "text");
    ASSERT_TRUE(take("notes"));
    EXPECT_FALSE(QDir(path("page.jpg")).exists());
    folder_.write("notes", "other text");
    folder_.write("notes (2)", "more text");

    EXPECT_EQ(putBack("page.jpg"), folder_.file("page.jpg"));
    EXPECT_EQ(putBack("page.jpg"), folder_.file("page (2).jpg"));
    EXPECT_EQ(putBack("page.jpg"), "") << "there is no third";
    EXPECT_EQ(putBack("notes"), folder_.file("notes (3)"));
    EXPECT_THAT(folder_.names(), ElementsAre("notes", "notes (2)", "notes (3)", "page (2).jpg", "page.jpg"));
    EXPECT_EQ(folder_.content("page.jpg"), "new");
    EXPECT_EQ(folder_.content("page (2).jpg"), "old");
    EXPECT_EQ(folder_.content("notes"), "other text");
    EXPECT_EQ(folder_.content("notes (3)"), "text");
    deleted_.reset();
    EXPECT_EQ(folder_.names().size(), 5U) << "what was brought back stays";
}

TEST_F(DeletedFilesTest, ComeBackToTheirOwnFolderUnderNamesWithAllTheirDots)
{
    for (const char* day : {"one", "two"}) {
        ASSERT_TRUE(QDir(path(".")).mkdir(QLatin1String(day)));
        folder_.write(std::string(day) + "/scan.of.page.jpg", day);
        ASSERT_TRUE(take((std::string(day) + "/scan.of.page.jpg").c_str()));
    }
    folder_.write("one/scan.of.page.jpg", "another");
    EXPECT_EQ(putBack("one/scan.of.page.jpg"), folder_.file("one/scan.of.page (2).jpg"));
    EXPECT_EQ(folder_.content("one/scan.of.page (2).jpg"), "one");
    mirvak::removeLeftOvers(folder_.file("two"));
    EXPECT_EQ(putBack("two/scan.of.page.jpg"), folder_.file("two/scan.of.page.jpg"));
    EXPECT_EQ(folder_.content("two/scan.of.page.jpg"), "two");
}

TEST_F(DeletedFilesTest, LeaveTheProcessItsFileHandles)
{
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{320, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    bool areTaken = true;
    for (int i = 0; i < 330 && areTaken; ++i) {
        folder_.write("page.jpg", "page " + std::to_string(i));
        areTaken = take("page.jpg");
    }
    const std::string back = putBack("page.jpg");
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(areTaken);
    EXPECT_EQ(back, folder_.file("page.jpg"));
    EXPECT_EQ(folder_.content("page.jpg"), "page 329");
}

TEST_F(DeletedFilesTest, GoForGoodWithTheObjectAndNoStartTakesThemBefore)
{
    for (int round = 0; round < 2; ++round) { // as many as may be locked at once, and more
        for (int i = 0; i < 200; ++i) {
            folder_.write("page.jpg", "a page");
            ASSERT_TRUE(take("page.jpg"));
        }
        EXPECT_EQ(folder_.names().size(), 200U);
        mirvak::removeLeftOvers(folder_.path());
        EXPECT_EQ(folder_.names().size(), 200U) << "round " << round;
        deleted_.emplace();
        EXPECT_THAT(folder_.names(), ElementsAre());
    }
}

TEST_F(DeletedFilesTest, WhatIsNoFileStays)
{
    ASSERT_TRUE(QDir(path(".")).mkdir(QStringLiteral("folder")));
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(take("folder"));
    EXPECT_FALSE(take("missing"));
    const std::string told = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(told.find(folder_.file("folder")), std::string::npos);
    EXPECT_NE(told.find(folder_.file("missing")), std::string::npos);
    EXPECT_THAT(folder_.names(), ElementsAre("folder"));
}

TEST_F(DeletedFilesTest, AHiddenFileChangesPlacesWithTheOneThatHasItsName)
{
    folder_.write("page.jpg", "before");
    const QString name = HiddenFile::nameBeside(path("page.jpg"));
    folder_.write(QFileInfo(name).fileName().toStdString(), "after");
    {
        HiddenFile file;
        file.adopt(name);
        EXPECT_NE(file.changePlaces(path("missing.jpg")), 0);
        mirvak::removeLeftOvers(folder_.path());
        EXPECT_EQ(TempDir::contentOf(name.toStdString()), "after") << "nothing was lost by the failure";
        ASSERT_EQ(file.changePlaces(path("page.jpg")), 0);
        EXPECT_EQ(folder_.content("page.jpg"), "after");
        mirvak::removeLeftOvers(folder_.path());
        ASSERT_EQ(file.changePlaces(path("page.jpg")), 0) << "and back: it was kept";
        EXPECT_EQ(folder_.content("page.jpg"), "before");
        EXPECT_EQ(file.bringBack(path("page.jpg")), EEXIST);
    }
    EXPECT_THAT(folder_.names(), ElementsAre("page.jpg"));
}

} // namespace
