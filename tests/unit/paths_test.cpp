#include "startup/paths.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "instance.h"
#include "startup/startupState.h"

namespace zy {

// The user ann, whose home has a blank; the current folder is a new one with a parent of its own.
class PathsTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        free(userName);
        userName = strdup("ann");
        free(userHome);
        userHome = strdup("/my users/ann");
        before = std::filesystem::current_path();
        char name[] = "/tmp/zytestXXXXXX";
        parent = std::filesystem::canonical(mkdtemp(name));
        here = parent + "/here";
        std::filesystem::create_directory(here);
        std::filesystem::current_path(here);
    }
    void TearDown() override {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(parent);
        InstanceTest::TearDown();
    }
    std::string before, parent, here;
};

TEST_F(PathsTest, APathIsResolvedComponentByComponent) {
    const std::pair<const char *, std::string> cases[] = {
        {"", ""},
        {"a/b", "a/b"},
        {"/a//b/", "/a//b/"},
        {".", here},
        {"./x", here + "/x"},
        {"..", parent},
        {"../x", parent + "/x"},
        {"../../../../x", "/x"},
        {"/a/b/../c", "/a/c"},
        {"/a/b/..", "/a"},
        {"/a/../..", "/"},
        {"/../x", "/x"},
        {"a/../x", here + "/x"},
        {"a/../../x", parent + "/x"},
        {"/a/./b", "/a/b"},
        {"/a/.", "/a/."},
        {"/a\\..\\b", "\\b"},
        {"~", "/my users/ann"},
        {"~/x", "/my users/ann/x"},
        {"~1", "~1"},
        // Names that only look alike.
        {".profile", ".profile"},
        {"/a/..b", "/a/..b"},
        {"/a/b~/c.", "/a/b~/c."},
    };
    for (auto &[text, expected] : cases)
        EXPECT_EQ(normalisePath(text, true), expected) << text;
}

TEST_F(PathsTest, APathEndsAtWhiteSpaceUnlessTheWholeTextIsOne) {
    EXPECT_EQ(normalisePath("/a/.. b", false), "/");
    EXPECT_EQ(normalisePath("/a b/../c", true), "/c");
    EXPECT_EQ(normalisePath(std::string(9000, 'a').c_str(), true).size(), SOURCE_LINE_MAX - 1u);
}

TEST_F(PathsTest, ATildeStandsForTheHomeWhereItBeginsAWord) {
    const std::pair<const char *, const char *> cases[] = {
        {"ls ~", "ls \"/my users/ann\""},
        {"~/x ~\\y", "\"/my users/ann\"/x \"/my users/ann\"\\y"},
        {"~ann/x>~ann", "\"/my users/ann\"/x>\"/my users/ann\""},
        {"~bob ~annie", "~bob ~annie"},
        {"~1 notes~ a~/b", "~1 notes~ a~/b"},
    };
    for (auto &[text, expected] : cases)
        EXPECT_EQ(expandTilde(text), expected);
    EXPECT_EQ(expandTildeBare("~/x;~"), "/my users/ann/x;/my users/ann");
}

TEST_F(PathsTest, ACurrentFolderThatIsGoneIsTheHome) {
    std::filesystem::remove(here);
    EXPECT_EQ(workingFolder(), "/my users/ann");
}

}  // namespace zy
