// Files that somebody else may change or take away while they are worked on.
#include "HeldFile.h"

#include "TempDir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <deque>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

std::string contentOf(const HeldFile& file)
{
    return TempDir::contentOf(file.path().toStdString());
}

} // namespace

TEST(HeldFile, SeesEveryChangeAndKeepsWhatItHeld)
{
    const TempDir folder;
    const QString path = QString::fromStdString(folder.write("page.png", "before"));
    const HeldFile held(path), again(path);
    EXPECT_TRUE(held.isUnchanged() && held.isSameAs(again));
    struct stat about;
    ASSERT_EQ(stat(path.toLocal8Bit().constData(), &about), 0);
    folder.write("page.png", "before and after"); // as a program does that keeps the time
    const timespec times[] = {about.st_atim, about.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, path.toLocal8Bit().constData(), times, 0), 0);
    EXPECT_FALSE(held.isUnchanged());
    EXPECT_FALSE(held.isSameAs(HeldFile(path)));

    const HeldFile longer(path);
    folder.write("other.png", "another");
    ASSERT_EQ(std::rename(folder.file("other.png").c_str(), folder.file("page.png").c_str()), 0);
    EXPECT_TRUE(longer.isUnchanged()) << "it is only no longer under that name";
    EXPECT_EQ(contentOf(longer), "before and after");
    EXPECT_FALSE(longer.isSameAs(HeldFile(path)));
    const std::string quick = folder.write("quick.png", "one");
    const HeldFile first(QString::fromStdString(quick));
    ASSERT_EQ(stat(quick.c_str(), &about), 0);
    folder.write("quick.png", "two"); // within the same second
    const timespec later[] = {about.st_atim,
                              {about.st_mtim.tv_sec, (about.st_mtim.tv_nsec + 500) % 1000000000}};
    ASSERT_EQ(utimensat(AT_FDCWD, quick.c_str(), later, 0), 0);
    EXPECT_FALSE(first.isUnchanged());
    const std::string copy = folder.write("copy.png", "TWO"); // as large, and with the time of the other
    ASSERT_EQ(utimensat(AT_FDCWD, copy.c_str(), later, 0), 0);
    EXPECT_FALSE(HeldFile(QString::fromStdString(quick)).isSameAs(HeldFile(QString::fromStdString(copy))));
    const HeldFile missing(QString::fromStdString(folder.file("missing")));
    EXPECT_FALSE(missing.isUnchanged() || missing.isSameAs(missing));
}

// A thousand pages must not take all that the program may open.
TEST(HeldFile, OfManyTheLastAreKnownByTheirNamesAlone)
{
    const TempDir folder;
    const QString path = QString::fromStdString(folder.write("page.png", "a page"));
    std::deque<HeldFile> all;
    for (int i = 0; i < 700; ++i)
        all.emplace_back(path);
    EXPECT_NE(all.front().path(), path);
    EXPECT_EQ(all.back().path(), path);
    for (const HeldFile& file : {std::cref(all.front()), std::cref(all.back())}) {
        EXPECT_TRUE(file.isUnchanged());
        EXPECT_EQ(contentOf(file), "a page");
    }
    const int free = open("/dev/null", O_RDONLY | O_CLOEXEC);
    EXPECT_LE(free, 512);
    close(free);
}
