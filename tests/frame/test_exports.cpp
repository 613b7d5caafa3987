// The built library exports, by their exact names, the launcher of every row of the launcher
// table and no other, the port hooks and the two exported classes; each launcher has a caption.
#include <dlfcn.h>
#include <elf.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "fenklib/FenkLaunchers.h"

namespace {

struct Library {
    void* handle = dlopen(FENK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    ~Library() {
        if (handle) dlclose(handle);
    }
};

struct TABLE_ROW {
    const char* name;
    const char* window;
};
constexpr TABLE_ROW kTable[] = {
#define FENK_LAUNCHER(name, window, shape, caption) {#name, #window},
#include "fenklib/FenkLauncherTable.h"
#undef FENK_LAUNCHER
};

// The names defined in the library's dynamic symbol table that begin with prefix.
std::set<std::string> ExportedNames(const char* path, const std::string& prefix) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> image((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::set<std::string> names;
    if (image.size() < sizeof(Elf64_Ehdr)) return names;
    const auto* header = reinterpret_cast<const Elf64_Ehdr*>(image.data());
    const auto* sections = reinterpret_cast<const Elf64_Shdr*>(image.data() + header->e_shoff);
    for (int i = 0; i < header->e_shnum; ++i) {
        if (sections[i].sh_type != SHT_DYNSYM) continue;
        const char* strings = image.data() + sections[sections[i].sh_link].sh_offset;
        const auto* symbols = reinterpret_cast<const Elf64_Sym*>(image.data() + sections[i].sh_offset);
        for (std::size_t s = 0; s < sections[i].sh_size / sizeof(Elf64_Sym); ++s) {
            const std::string name = strings + symbols[s].st_name;
            if (symbols[s].st_shndx != SHN_UNDEF && name.rfind(prefix, 0) == 0) names.insert(name);
        }
    }
    return names;
}

TEST(Exports, EveryLauncherOfTheTableAndNoOtherIsExported) {
    const Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    std::set<std::string> rows;
    for (const TABLE_ROW& row : kTable) {
        EXPECT_NE(dlsym(lib.handle, row.name), nullptr) << row.name;
        EXPECT_TRUE(rows.insert(row.name).second) << row.name << " has two rows";
    }
    EXPECT_EQ(ExportedNames(FENK_LIBRARY_PATH, "run_"), rows) << "a launcher exported outside the table";
}

// A launcher is named run_ and its window's class without the C; the names hosts already bind
// differently keep their spelling, among them the doubled F of the channel-file loader.
TEST(Exports, LauncherNamesFollowTheirWindowsSaveTheKeptSpellings) {
    const struct {
        const char* window;
        const char* name;
    } kept[] = {
        {"CTivar_VolumeControlDlg", "run_VolumeControlDlg"},
        {"CCLTCCFLoaderDlg", "run_CLTCCFFLoaderDlg"},
    };
    for (const TABLE_ROW& row : kTable) {
        std::string expected = std::string("run_") + (row.window + 1);
        for (const auto& k : kept)
            if (std::string(row.window) == k.window) expected = k.name;
        EXPECT_EQ(row.name, expected) << row.window;
    }
}

TEST(Exports, HooksAndExportedClassesResolveAndInternalsStayHidden) {
    const Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    const char* present[] = {
        "PreOpenPort",
        "PostClosePort",
        "OnExitApp",
        "FenkLauncherCaption",
        "_ZN19CFenkGlobalSettings3RefEv",
        "_ZN11CFenkLibDoc21GetApplicationVersionEb",
        "_ZN11CFenkLibDoc22GetLongApplicationNameEb",
        "_ZN11CFenkLibDoc23GetShortApplicationNameEb",
    };
    for (const char* name : present) EXPECT_NE(dlsym(lib.handle, name), nullptr) << name;
    EXPECT_EQ(dlsym(lib.handle, "_ZN11CFenkLibApp8InstanceEv"), nullptr) << "internal classes stay hidden";
}

// Every launcher has a caption in the library's string table, and two launchers never share one
// (a host's menu would show the same entry twice).
TEST(Exports, EveryLauncherHasACaptionOfItsOwn) {
    const Library lib;
    ASSERT_NE(lib.handle, nullptr) << dlerror();
    const auto caption = reinterpret_cast<decltype(&FenkLauncherCaption)>(dlsym(lib.handle, "FenkLauncherCaption"));
    ASSERT_NE(caption, nullptr);
    std::set<basekit::ustring> seen;
    for (const TABLE_ROW& row : kTable) {
        basekit::ustring text;
        EXPECT_TRUE(caption(row.name, text)) << row.name;
        EXPECT_FALSE(text.empty()) << row.name;
        EXPECT_TRUE(seen.insert(text).second) << row.name << ": " << text.ToUtf8();
    }
    basekit::ustring text;
    EXPECT_FALSE(caption("run_NoSuchDlg", text)) << "a name that is no launcher";
    EXPECT_FALSE(caption(nullptr, text));
}

}  // namespace
