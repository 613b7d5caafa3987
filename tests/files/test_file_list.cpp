// The receiver's log-folder listing taken apart.
#include <gtest/gtest.h>

#include "fenklib/receiver/CVokReceiverMate.h"

using devio::vok::LOG_FILE;

namespace {

TEST(FileList, RepliesTakenApart) {
    struct Row {
        const char* legend;
        const wchar_t* reply;
        std::vector<LOG_FILE> files;
    };
    const Row rows[] = {
        {"two files, oldest first", L"{{log0613a.jps,9540,2024/06/13 10:02:00},{log0614a.jps,0,2024/06/14 09:12:44}}",
         {{L"log0613a.jps", 9540, L"2024/06/13 10:02:00"}, {L"log0614a.jps", 0, L"2024/06/14 09:12:44"}}},
        {"an empty folder", L"{}", {}},
        {"sizes beyond 4 GB stay whole", L"{{big.jps,5000000000,2024/06/13 10:02:00}}",
         {{L"big.jps", 5000000000ull, L"2024/06/13 10:02:00"}}},
        {"an entry without size is skipped", L"{{a.jps,,t},{b.jps,1,t}}", {{L"b.jps", 1, L"t"}}},
        {"an entry with too few fields is skipped", L"{{a.jps,1},{b.jps,2,t}}", {{L"b.jps", 2, L"t"}}},
        {"no braces at all", L"wrong", {}},
    };
    for (const Row& row : rows) EXPECT_EQ(devio::CVokReceiverMateCore::ParseFileList(row.reply), row.files) << row.legend;
}

}  // namespace
