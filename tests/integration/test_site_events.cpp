// The site configuration dialog against the simulator: the antenna database read before the
// window shows, and the site events found again in the receiver's current log file.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include "SimLink.h"
#include "fenklib/receiver/CReceiverFileReader.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/site/CSiteConfigurationDlg.h"
#include "fenklib/frame/SiteEvents.h"
#include "support/SettingsSandbox.h"

using basekit::ustring;
using fenktest::SimLink;

namespace {

class SiteEvents : public fenktest::CSettingsSandboxTest {};

// The "name=value" parts of the event records in the receiver's current log file, read
// through the file copier.
std::vector<std::string> LoggedEvents(const SimLink& link) {
    devio::CVokReceiverMate mate(link.Receiver());
    const ustring log = L"/log/" + mate.GetCurrentFile(L'a');
    const auto copier = devio::CReceiverFileReader::CreateCopier(link.Receiver());
    copier->Start(log, L"");
    EXPECT_EQ(copier->DoneEvent().Wait(60000).kind, basekit::WaitResult::Signalled);
    EXPECT_EQ(copier->Error(), 0u) << copier->ErrorText().ToUtf8();
    std::vector<std::string> events;
    const std::string data = copier->Data();
    for (size_t at = data.find("EVT "); at != std::string::npos; at = data.find("EVT ", at + 1)) {
        const size_t end = data.find('\n', at);
        const std::string line = data.substr(at, end - at);
        // "EVT YYYY/MM/DD hh:mm:ss name=value"
        const size_t date = line.find(' '), time = line.find(' ', date + 1), record = line.find(' ', time + 1);
        events.push_back(line.substr(record + 1));
    }
    return events;
}

TEST_F(SiteEvents, OkWritesTheSiteIntoTheCurrentLogFile) {
    SimLink link;
    SiteParameters stored;
    stored.SiteName = L"OLD";
    stored.AntennaType = L"fnk-ga3 scis";
    stored.AntennaHeight = 1.5f;
    stored.Slant = true;
    CFenkGlobalSettings::Ref().SetSiteParameters(stored);

    CSiteConfigurationDlg dlg(link.Receiver(), nullptr);
    QString shownType;
    QTimer::singleShot(0, &dlg, [&] {
        shownType = dlg.Controls().Get<QComboBox>(3079)->currentText();
        dlg.Controls().Get<QLineEdit>(3077)->setText("Hill \"7\"");
        dlg.Controls().Get<QLineEdit>(3078)->setText("tripod, over the mark");
        if (!qEnvironmentVariableIsEmpty("FENK_BUILD_DIR"))
            dlg.grab().save(qEnvironmentVariable("FENK_BUILD_DIR") + "/tour-SiteConfigurationDlg.png");
        dlg.accept();
    });
    ASSERT_EQ(dlg.DoModal(), 1);

    devio::CVokReceiverMate mate(link.Receiver());
    EXPECT_EQ(dlg.AntennaIds().size(), std::stoul(mate.ExecuteCommand(L"print,antdb/ids/count", true).ToUtf8()))
        << "the whole database";
    EXPECT_EQ(shownType, "FNK-GA3 SCIS") << "the receiver's spelling of the stored type";
    EXPECT_EQ(LoggedEvents(link), (std::vector<std::string>{"_SIT=Hill '7'", "_DSC=tripod, over the mark", "_ANH=1.500000s",
                                                             "_DYM=STATIC", "_ANT=FNK-GA3 SCIS"}));
}

TEST_F(SiteEvents, WriteSiteEventsAppendsInOrder) {
    struct Case { const char* legend; SiteParameters site; std::vector<std::string> events; };
    const Case cases[] = {
        {"empty site, height 0", SiteParameters{}, {"_SIT=", "_DSC=", "_ANH=0.000000", "_DYM=STATIC", "_ANT="}},
        {"dynamic, slant, a comma in the description",
         SiteParameters{L"R2", L"rover, pole", L"LYN-A2 NONE", 2.0f, true, true},
         {"_SIT=R2", "_DSC=rover, pole", "_ANH=2.000000s", "_DYM=DYNAMIC", "_ANT=LYN-A2 NONE"}},
    };
    for (const Case& c : cases) {
        SimLink link;
        devio::CVokReceiverMate mate(link.Receiver());
        WriteSiteEvents(mate, c.site);
        EXPECT_EQ(LoggedEvents(link), c.events) << c.legend;
    }
}

// The antenna list is long: at 9600 bit/s its reply takes seconds, within the command's own
// time-out.
TEST_F(SiteEvents, AntennaDatabaseOverASlowSerialLine) {
    rcvsim::SimOptions paced;
    paced.throttle = true;
    SimLink link(SimLink::Over::Pty, paced, 9600);
    devio::CVokReceiverMate mate(link.Receiver());
    const std::vector<ustring> ids = mate.ListAntennaIds();
    EXPECT_GE(ids.size(), 300u);
    EXPECT_NE(std::find(ids.begin(), ids.end(), L"FNK-GA3 NONE"), ids.end());
}

}  // namespace
