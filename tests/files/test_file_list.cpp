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
        {"two files, oldest first", L"{{log0613a.fnk,9540,2024/06/13 10:02:00},{log0614a.fnk,0,2024/06/14 09:12:44}}",
         {{L"log0613a.fnk", 9540, L"2024/06/13 10:02:00"}, {L"log0614a.fnk", 0, L"2024/06/14 09:12:44"}}},
        {"an empty folder", L"{}", {}},
        {"sizes beyond 4 GB stay whole", L"{{big.fnk,5000000000,2024/06/13 10:02:00}}",
         {{L"big.fnk", 5000000000ull, L"2024/06/13 10:02:00"}}},
        {"an entry without size is skipped", L"{{a.fnk,,t},{b.fnk,1,t}}", {{L"b.fnk", 1, L"t"}}},
        {"an entry with too few fields is skipped", L"{{a.fnk,1},{b.fnk,2,t}}", {{L"b.fnk", 2, L"t"}}},
        {"no braces at all", L"wrong", {}},
    };
    for (const Row& row : rows) EXPECT_EQ(devio::CVokReceiverMateCore::ParseFileList(row.reply), row.files) << row.legend;
}

}  // namespace
