// Under a comma-decimal user locale, nothing that goes to the receiver, into the settings or
// into files changes: only texts shown to a person may follow the locale.
#include <gtest/gtest.h>

#include <clocale>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/basekit/CCLocaleScope.h"
#include "platform/basekit/CThread.h"
#include "support/ScriptedReceiver.h"

using basekit::ustring;

namespace {

struct CommaLocale {
    std::string previous = std::setlocale(LC_ALL, nullptr);
    bool active = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    ~CommaLocale() { std::setlocale(LC_ALL, previous.c_str()); }
};

TEST(Locale, ProtocolAndStoredNumbersStayInTheCLocale) {
    const CommaLocale comma;
    if (!comma.active) GTEST_SKIP() << "de_DE.UTF-8 is not generated on this machine (scripts/test.sh makes it)";
    ASSERT_EQ(std::wstring(ustring::Format(L"%.1f", 0.5)), L"0.5");   // the formatting itself
    const auto rx = basekit::CSmartPtr<fenktest::CScriptedReceiver>(new fenktest::CScriptedReceiver());
    rx->Otherwise(fenktest::CScriptedReceiver::Reply(L"1.25"));
    devio::CVokReceiverMate mate(basekit::CSmartPtr<devio::IReceiver>(rx.Get()));
    mate.Set(devio::par::LogScPeriod, 0.5);
    struct Case { const char* legend; ustring got; const wchar_t* want; };
    const Case cases[] = {
        {"a real setting", rx->Sent().back(), L"set,log/sc/period,0.500000"},
        {"a real reply", ustring::Format(L"%g", mate.Get(devio::par::PosPdop)), L"1.25"},
        {"two-decimal values", ustring::fcvt(7.816, 2), L"7.82"},
        {"a stored height", ustring::Format(L"%f", 1.5), L"1.500000"},
        {"a parsed height", ustring::Format(L"%g", basekit::ParseReal(L"1.5")), L"1.5"},
        {"geodetic text", FormatGeoText({55.5, 37.25, 150.5}), L"55\u00b030'0.0000''N; 37\u00b015'0.0000''E; 150.50m"},
        {"Cartesian text", FormatXyzText({1.5, -2.25, 3}), L"1.5000,-2.2500,3.0000"},
        {"a W84 position", devio::CVokReceiverMate::FormatW84(devio::vok::POS_XYZ{1.5, 2, 3}), L"{W84,1.5000,2.0000,3.0000}"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.legend;
    ustring onWorker;
    basekit::CThread worker;
    worker.Start([&] {
        onWorker = devio::CVokReceiverMate::FormatW84(devio::vok::POS_GEO{-33.5, -70.75, 12.5});
        return 0u;
    });
    worker.Close();
    EXPECT_EQ(onWorker, L"{W84,S33d30m0.000000s,W070d45m0.000000s,12.500000}") << "on a worker thread too";
}

}  // namespace
