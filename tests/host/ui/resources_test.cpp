// Resource folders: templates and files beside a module, and what is said of broken ones.
#include <cstdlib>
#include <filesystem>

#include "host/os/files.h"
#include "tests/host/ui/support.h"

using namespace host;
using testing::HasSubstr;

namespace {

// A folder with templates in it, gone at the end.
class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "corvane-rc-XXXXXX").string();
        path = mkdtemp(name.data());
        std::filesystem::create_directories(path + "/resources/dialogs");
        std::filesystem::create_directories(path + "/build/bin");
    }
    ~Folder() { std::filesystem::remove_all(path); }
    void add(const std::string& name, const std::string& text) const {
        EXPECT_FALSE(writeWhole(path + "/resources/dialogs/" + name, text));
    }
    std::string path;
};

} // namespace

TEST(Resources, TemplatesAreFoundBesideTheModuleAndAboveIt) {
    const Folder folder;
    folder.add("a.rc", "11 DIALOGEX 0,0,9,9\nCAPTION \"A\"\nBEGIN\nEND\n7 PNG \"a.png\"\n");
    folder.add("a.png", "bytes");
    folder.add("b.rc",
               "12 DIALOGEX 0,0,9,9\nBEGIN\nEND\n11 DIALOGEX 0,0,9,9\nBEGIN\nEND\n8 PNG \"none.png\"");
    folder.add("c.rc", "13 DIALOGEX 0,0,9\nBEGIN\nEND\n");
    const HINSTANCE module = resourceModule(folder.path + "/build/bin/");
    EXPECT_EQ(module, resourceModule(folder.path + "/build/bin"));
    std::string error;
    ASSERT_NE(nullptr, dialogTemplate(module, 11, error)) << error;
    EXPECT_EQ(L"A", dialogTemplate(module, 11, error)->caption);
    EXPECT_NE(nullptr, dialogTemplate(module, 12, error));
    EXPECT_EQ(nullptr, dialogTemplate(module, 13, error));
    EXPECT_THAT(error, testing::AllOf(HasSubstr("no template of dialog 13"), HasSubstr("c.rc, line 2: "),
                                      HasSubstr("b.rc: dialog 11 stands in"), HasSubstr("a.rc too")));
    EXPECT_EQ(2u, resourceErrors(module).size());
    EXPECT_EQ("bytes", resourceBytes(module, 7, L"png").bytes);
    EXPECT_FALSE(resourceBytes(module, 8, L"PNG"));
    EXPECT_THAT(resourceBytes(module, 9, L"PNG").error, HasSubstr("no PNG resource 9"));
    EXPECT_FALSE(resourceBytes(module, 7, L"BMP"));
}

TEST(Resources, ModuleInUseIsSwitchedForAWhile) {
    const Folder folder;
    folder.add("a.rc", "21 DIALOGEX 0,0,50,50\nSTYLE WS_POPUP\nBEGIN\nEND\n");
    uitest::Runner runner([](HWND dialog) { EndDialog(dialog, 5); });
    EXPECT_EQ(-1, CDialog(21).DoModal());
    {
        const CAcModuleResourceOverride resources(resourceModule(folder.path));
        EXPECT_EQ(5, CDialog(21).DoModal());
    }
    EXPECT_EQ(-1, CDialog(21).DoModal());
}
