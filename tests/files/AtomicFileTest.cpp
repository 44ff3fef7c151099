#include "AtomicFile.h"

#include "DiskFullAt.h"
#include "FileSystem.h"
#include "LeftOvers.h"
#include "NewName.h"
#include "TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using mirvak::AtomicFile;
using mirvak::IfTaken;
using testing::ElementsAre;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

namespace {

const std::string text(100'000, 'x');

class Writing : public ::testing::Test
{
protected:
    AtomicFile::Commit write(const std::string& name, IfTaken ifTaken) const
    {
        AtomicFile file(folder.file(name), ifTaken);
        EXPECT_TRUE(file.write(text.data(), text.size()));
        return file.commit();
    }
    const TempDir folder;
    FileSystem system;
};

struct Abilities
{
    const char* name;
    bool refusesToReplace, knowsLinks;
};

class OnEveryFileSystem : public Writing, public ::testing::WithParamInterface<Abilities>
{
protected:
    OnEveryFileSystem()
    {
        system.refusesToReplace = GetParam().refusesToReplace;
        system.knowsLinks = GetParam().knowsLinks;
    }
    void expectRefusal(const char* what)
    {
        const auto before = folder.names();
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(write("page", IfTaken::refuse), AtomicFile::Commit::taken) << what;
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << what;
        EXPECT_THAT(folder.names(), testing::UnorderedElementsAreArray(before)) << what;
    }
};

} // namespace

TEST_P(OnEveryFileSystem, AFileThatHasItsNameOutlivesAPowerCut)
{
    for (const IfTaken ifTaken : {IfTaken::refuse, IfTaken::replace}) {
        ASSERT_EQ(write("page", ifTaken), AtomicFile::Commit::done);
        EXPECT_EQ(FileSystem::sizeAfterPowerCut(folder.file("page")), off_t(text.size()));
        EXPECT_EQ(folder.content("page"), text);
        EXPECT_THAT(folder.names(), ElementsAre("page"));
        folder.write("page", "is replaced next");
    }
}

TEST_P(OnEveryFileSystem, NothingThatHasTheNameIsReplaced)
{
    EXPECT_EQ(mirvak::moveToNewName(folder.file("missing"), folder.file("page")), ENOENT);
    EXPECT_TRUE(folder.names().empty()) << "a move that fails takes no name";
    folder.write("page", "the page before");
    expectRefusal("a file");
    EXPECT_EQ(folder.content("page"), "the page before");
    fs::remove(folder.file("page"));
    fs::create_directory(folder.file("page"));
    expectRefusal("a folder");
    fs::remove(folder.file("page"));
    fs::create_symlink("nowhere", folder.file("page"));
    expectRefusal("a link to nothing");
    fs::remove(folder.file("page"));

    system.beforeNaming = [this] { folder.write("page", "another program's"); };
    EXPECT_EQ(write("page", IfTaken::refuse), AtomicFile::Commit::taken) << "at the last moment";
    EXPECT_EQ(folder.content("page"), "another program's");
    EXPECT_THAT(folder.names(), ElementsAre("page"));
}

INSTANTIATE_TEST_SUITE_P(Kinds,
                         OnEveryFileSystem,
                         ::testing::Values(Abilities{"ThatKnowsAll", true, true},
                                           Abilities{"ThatOnlyLinks", false, true},
                                           Abilities{"ThatKnowsNeither", false, false}),
                         [](const auto& kind) { return kind.param.name; });

TEST_F(Writing, OfAFileThatTheDiskCannotHoldNothingStaysAndAPrivateNameIsNotTold)
{
    for (const auto readers : {mirvak::Readers::all, mirvak::Readers::owner}) {
        const DiskFullAt limit(text.size() / 2);
        ::testing::internal::CaptureStderr();
        {
            AtomicFile file(folder.file("visit.jpg"), IfTaken::refuse, readers);
            EXPECT_FALSE(file.write(text.data(), text.size()));
            EXPECT_EQ(file.commit(), AtomicFile::Commit::failed) << "whoever asks only now";
        }
        const std::string said = ::testing::internal::GetCapturedStderr();
        EXPECT_NE(said.find(folder.path()), std::string::npos) << said;
        EXPECT_EQ(said.find("visit") == std::string::npos, readers == mirvak::Readers::owner) << said;
        EXPECT_TRUE(folder.names().empty());
    }
}

TEST_F(Writing, WhatAKilledProcessLeftIsRemovedAndNothingElse)
{
    const pid_t child = fork();
    if (child == 0) {
        AtomicFile file(folder.file("film"), IfTaken::refuse);
        file.write(text.data(), text.size());
        ::kill(getpid(), SIGKILL);
    }
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    ASSERT_EQ(folder.names().size(), 1U);
    const std::string own = ".lumro-" + std::to_string(getpid()) + "-999.tmp";
    folder.write(own, "of an earlier process with this one's number");
    const std::vector<std::string> others{".lumro-notes.tmp", ".lumro-1-2.tmp.jpg", "1-2.tmp", ".lumro-.tmp"};
    for (const std::string& name : others)
        folder.write(name, "not ours");
    fs::create_symlink(".lumro-notes.tmp", folder.file(".lumro-1-3.tmp"));
    fs::create_directory(folder.file(".lumro-1-4.tmp"));
    ASSERT_EQ(mkfifo(folder.file(".lumro-1-5.tmp").c_str(), 0600), 0);
    mirvak::removeLeftOvers(folder.path());
    auto kept = others;
    kept.insert(kept.end(), {".lumro-1-3.tmp", ".lumro-1-4.tmp", ".lumro-1-5.tmp"});
    EXPECT_THAT(folder.names(), testing::UnorderedElementsAreArray(kept));
    mirvak::removeLeftOvers(folder.file("missing"));
}

TEST_F(Writing, AFileThatIsBeingWrittenIsNoLeftOverUpToItsName)
{
    AtomicFile file(folder.file("film"), IfTaken::refuse);
    mirvak::removeLeftOvers(folder.path());
    std::ofstream(file.temporary()) << "written by another library";
    system.beforeNaming = [this] { mirvak::removeLeftOvers(folder.path()); };
    EXPECT_EQ(file.commit(), AtomicFile::Commit::done);
    EXPECT_EQ(folder.content("film"), "written by another library");
}
