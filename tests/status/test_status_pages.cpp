// What the pages keep of the records the sheet hands them, without their windows.
#include <gtest/gtest.h>

#include "fenklib/status/CStatusDataLinkPP.h"
#include "support/ScriptedReceiver.h"

namespace {

devio::DATALINK_RECORD Link(char port, float age) {
    devio::DATALINK_RECORD r;
    r.port = port, r.format = 'T', r.age = age;
    return r;
}

TEST(DataLinkPage, AStaleLinkIsOneWhoseOldCorrectionsKeepAgeing) {
    struct Row {
        const char* legend;
        std::vector<float> ages;   // successive ages of link A
        bool stale;
    };
    const Row rows[] = {
        {"fresh corrections", {1, 1, 1}, false},
        {"old but not ageing (a slow base)", {12, 12, 12}, false},
        {"ageing past the limit", {8, 9, 10, 11}, true},
        {"ageing below the limit", {1, 2, 3}, false},
        {"stale, then corrections again", {10, 11, 12, 0.5}, false},
        {"stale stays stale while it keeps ageing", {10, 11, 12, 13}, true},
    };
    for (const auto& row : rows) {
        basekit::CSmartPtr<fenktest::CScriptedReceiver> rx(new fenktest::CScriptedReceiver());
        CStatusDataLinkPP page(basekit::CSmartPtr<devio::IReceiver>(rx.Get()));
        for (const float age : row.ages) page.OnDataLink(Link('A', age));
        page.OnDataLink(Link('C', 1));
        ASSERT_EQ(page.Links().size(), 2u) << row.legend << ": one row per port";
        EXPECT_EQ(page.Links().at('A').stale, row.stale) << row.legend;
        EXPECT_FALSE(page.Links().at('C').stale) << row.legend << ": the other link is judged apart";
    }
}

}  // namespace
