// The universal modem sheet on the simulated modems over a pseudo-terminal: what it reads when
// it opens, writing only what changed, the channel list, the SIM's PIN, refusals of bad input
// with nothing sent, and a modem that falls silent in the middle of Apply.
#include <gtest/gtest.h>

#include <algorithm>

#include "fenklib/modem/CUniversalModemPS.h"
#include "fenklib/modemctl/CModemMate.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "integration/ModemSimLink.h"
#include "platform/uikit/CMessageBoxResponder.h"
#include "support/ModalDriver.h"
#include "support/SettingsSandbox.h"

namespace {

using namespace devio;
using basekit::ustring;
using fenktest::Await;
using fenktest::DriveModal;
using fenktest::ModemSimLink;

rcvsim::ModemOptions Uhf() {
    rcvsim::ModemOptions o;
    o.model = "FR-400";
    return o;
}

rcvsim::ModemOptions Cellular(bool locked, std::uint32_t seed) {
    rcvsim::ModemOptions o;
    o.kind = rcvsim::ModemKind::Cellular;
    o.simLocked = locked;
    o.seed = seed;
    o.registerAfterS = 0;
    return o;
}

ustring Reading(const CModemPage& page, unsigned labelId) {
    const ustring name = LoadResString(labelId);
    for (const auto& [label, value] : page.Readings())
        if (label.ToUtf8().rfind(name.ToUtf8(), 0) == 0) return value;
    return L"(missing)";
}

// Shows the page (a page is read and applied only once it has been shown).
bool ShowPage(CUniversalModemPS& sheet, CModemPage& page) {
    return sheet.SetActivePage(sheet.GetPageIndex(&page));
}

bool Idle(CUniversalModemPS& sheet) {
    for (CModemPage* page : sheet.ShownPages())
        if (page->IsBusy()) return false;
    return !sheet.IsApplying();
}

// Applies and waits for the sheet to have finished the write.
bool Apply(CUniversalModemPS& sheet) {
    sheet.ApplyNow();
    return Await(&sheet, [&] { return Idle(sheet); });
}

std::vector<std::string> Settings(const ModemSimLink& link) { return link.sim->Core().Writes(); }

class ModemSheet : public fenktest::CSettingsSandboxTest {};

TEST_F(ModemSheet, EachFamilyOpensWithItsPagesAndTheValuesRead) {
    struct Case {
        const char* legend;
        rcvsim::ModemOptions options;
        int rate;
        std::vector<EModemPage> pages;
        std::vector<std::pair<unsigned, ustring>> shown;   // on the last page
    };
    const Case cases[] = {
        {"UHF radio at 9600 bit/s: General, Radio, Channels", Uhf(), 9600,
         {EModemPage::General, EModemPage::Radio, EModemPage::Channels},
         {{IDS_MODEM_ACTIVE_CHANNEL, ustring(L"1")}}},
        {"UHF radio at 115200 bit/s", Uhf(), 115200, {EModemPage::General, EModemPage::Radio, EModemPage::Channels},
         {{IDS_MODEM_ACTIVE_CHANNEL, ustring(L"1")}}},
        {"cellular modem: General and Cellular", Cellular(false, 11), 115200, {EModemPage::General, EModemPage::Cellular},
         {{IDS_MODEM_SIM_STATE, LoadResString(IDS_MODEM_SIM_READY)}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.legend);
        ModemSimLink link(c.options, c.rate);
        CUniversalModemPS sheet(link.Modem(), nullptr);
        const int result = DriveModal(sheet, [&] {
            ASSERT_TRUE(Await(&sheet, [&] { return sheet.IsRead() && Idle(sheet); }));
            std::vector<EModemPage> kinds;
            for (CModemPage* page : sheet.ShownPages()) kinds.push_back(page->Kind());
            EXPECT_EQ(kinds, c.pages);
            CModemPage& general = sheet.Page(EModemPage::General);
            EXPECT_EQ(Reading(general, IDS_MODEM_MODEL), c.options.kind == rcvsim::ModemKind::Uhf ? L"FR-400" : L"CM-27");
            EXPECT_EQ(Reading(general, IDS_MODEM_LINE_RATE), ustring::Format(L"%d", c.rate));
            CModemPage& last = *sheet.ShownPages().back();
            for (const auto& [label, value] : c.shown) EXPECT_EQ(Reading(last, label), value);
            if (last.Kind() == EModemPage::Channels) {
                EXPECT_EQ(last.Channels().size(), 40u);
                EXPECT_EQ(Reading(sheet.Page(EModemPage::Radio), IDS_MODEM_FREQUENCY), L"438.00000");
            }
            sheet.EndDialog(1);
        });
        EXPECT_EQ(result, 1);
    }
}

TEST_F(ModemSheet, APortWhereNothingAnswersEndsTheSheetWithThree) {
    rcvsim::ModemOptions o = Uhf();
    o.faults.silenceAll = true;
    ModemSimLink link(o, 115200);
    const uikit::CMessageBoxResponder boxes;
    CUniversalModemPS sheet(link.Modem(), nullptr);
    EXPECT_EQ(DriveModal(sheet, [] {}), 3);
    ASSERT_EQ(boxes.Requests().size(), 1u) << "one message";
    const std::string said = boxes.Requests()[0].text.ToUtf8() + boxes.Requests()[0].details.ToUtf8();
    EXPECT_NE(said.find("115200"), std::string::npos) << said;
}

TEST_F(ModemSheet, OnlyTheChangedSettingIsWrittenAndTheRadiosValueShown) {
    ModemSimLink link(Uhf(), 115200);
    CUniversalModemPS sheet(link.Modem(), nullptr);
    DriveModal(sheet, [&] {
        ASSERT_TRUE(Await(&sheet, [&] { return sheet.IsRead() && Idle(sheet); }));
        CModemPage& radio = sheet.Page(EModemPage::Radio);
        ASSERT_TRUE(ShowPage(sheet, radio));
        ASSERT_TRUE(radio.Edit(L"frequency", L"440.125"));
        ASSERT_TRUE(Apply(sheet));
        EXPECT_TRUE(sheet.LastApplySucceeded());
        EXPECT_EQ(Settings(link), std::vector<std::string>{"SL&F=440.12500"});
        EXPECT_EQ(Reading(radio, IDS_MODEM_FREQUENCY), L"440.12500") << "as the radio read it back";
        ASSERT_TRUE(Apply(sheet));
        EXPECT_EQ(Settings(link).size(), 1u) << "nothing changed, nothing written";
        sheet.EndDialog(2);
    });
}

TEST_F(ModemSheet, TheChannelListRoundTripsThroughTheChannelsPage) {
    ModemSimLink link(Uhf(), 115200);
    std::vector<RADIO_CHANNEL> wanted;
    CUniversalModemPS sheet(link.Modem(), nullptr);
    DriveModal(sheet, [&] {
        ASSERT_TRUE(Await(&sheet, [&] { return sheet.IsRead() && Idle(sheet); }));
        CModemPage& channels = sheet.Page(EModemPage::Channels);
        ASSERT_TRUE(ShowPage(sheet, channels));
        wanted = channels.Channels();
        ASSERT_EQ(wanted.size(), 40u);
        for (std::size_t i = 0; i < wanted.size(); ++i) wanted[i].frequencyMHz = 410.0 + 0.0125 * static_cast<double>(i * 8);
        wanted.pop_back();
        channels.SetChannels(wanted);
        ASSERT_TRUE(Apply(sheet));
        EXPECT_TRUE(sheet.LastApplySucceeded());
        EXPECT_EQ(channels.Channels(), wanted) << "as read back after the write";
        sheet.EndDialog(1);
    });
    CModemMate mate(link.Modem());
    mate.UseFamily(EModemFamily::Uhf);
    EXPECT_EQ(mate.ReadChannels(), wanted) << "what the radio keeps";
}

TEST_F(ModemSheet, BadInputIsRefusedAtTheControlAndNothingIsSent) {
    struct Case {
        const char* legend;
        bool cellular;
        const wchar_t* key;
        const wchar_t* text;
        unsigned reasonId;   // 0: the control takes no such value at all
    };
    const Case cases[] = {
        {"frequency above the band", false, L"frequency", L"480.0", IDS_MODEM_BAD_RANGE},
        {"frequency below the band", false, L"frequency", L"400", IDS_MODEM_BAD_RANGE},
        {"comma as decimal point", false, L"frequency", L"440,125", IDS_MODEM_BAD_COMMA},
        {"a power the radio lacks", false, L"power", L"123", 0},
        {"address that is not hex", false, L"address", L"12G4", IDS_MODEM_BAD_HEX},
        {"APN with a quote", true, L"apn", L"inter\"net", IDS_MODEM_BAD_APN_QUOTE},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.legend);
        ModemSimLink link(c.cellular ? Cellular(false, 21) : Uhf(), 115200);
        const uikit::CMessageBoxResponder boxes;
        CUniversalModemPS sheet(link.Modem(), nullptr);
        DriveModal(sheet, [&] {
            ASSERT_TRUE(Await(&sheet, [&] { return sheet.IsRead() && Idle(sheet); }));
            CModemPage& page = sheet.Page(c.cellular ? EModemPage::Cellular : EModemPage::Radio);
            ASSERT_TRUE(ShowPage(sheet, page));
            link.modem->WireLog().Clear();
            const bool taken = page.Edit(c.key, c.text);
            EXPECT_EQ(taken, c.reasonId != 0);
            if (taken) {
                EXPECT_FALSE(page.Refusal().empty());
                EXPECT_NE(page.Reason(), ustring()) << "the reason shows at the control";
                sheet.ApplyNow();
                EXPECT_FALSE(sheet.LastApplySucceeded());
                ASSERT_EQ(boxes.Requests().size(), 1u);
                EXPECT_EQ(boxes.Requests()[0].text, page.Refusal());
            }
            EXPECT_TRUE(Settings(link).empty());
            sheet.EndDialog(2);
        });
    }
}

TEST_F(ModemSheet, ThePinIsAskedSentOnlyWhenValidAndTheThirdTryNeedsConsent) {
    ModemSimLink link(Cellular(true, 31), 115200);
    uikit::CMessageBoxResponder boxes;   // refuses the last try
    CUniversalModemPS sheet(link.Modem(), nullptr);
    DriveModal(sheet, [&] {
        ASSERT_TRUE(Await(&sheet, [&] { return sheet.IsRead() && Idle(sheet); }));
        CModemPage& cell = sheet.Page(EModemPage::Cellular);
        ASSERT_TRUE(ShowPage(sheet, cell));
        EXPECT_EQ(Reading(cell, IDS_MODEM_SIM_STATE), LoadResString(IDS_MODEM_SIM_PIN));
        link.modem->WireLog().Clear();
        struct Step {
            const char* legend;
            const wchar_t* pin;
            bool sent;
            unsigned reasonId;
        };
        const Step steps[] = {
            {"three digits: refused, not sent", L"123", false, IDS_MODEM_BAD_PIN},
            {"a letter: refused, not sent", L"12a4", false, IDS_MODEM_BAD_PIN},
            {"first wrong PIN", L"0000", true, IDS_MODEM_PIN_WRONG},
            {"second wrong PIN", L"1111", true, IDS_MODEM_PIN_WRONG},
            {"third try: the user did not confirm, not sent", L"1234", false, IDS_MODEM_PIN_WRONG},
        };
        for (const Step& s : steps) {
            SCOPED_TRACE(s.legend);
            const auto before = link.Written().size();
            cell.TypePin(s.pin);
            const bool sent = cell.OnEnterPin();
            EXPECT_EQ(sent, s.sent);
            ASSERT_TRUE(Await(&sheet, [&] { return Idle(sheet); }));
            if (!s.sent) {
                EXPECT_EQ(link.Written().size(), before);
            }
            EXPECT_EQ(cell.Reason(), LoadResString(s.reasonId));
        }
        sheet.EndDialog(2);
    });
    EXPECT_NE(boxes.Requests().empty(), true) << "the last try was asked";
}

TEST_F(ModemSheet, ACorrectPinUnlocksTheSim) {
    ModemSimLink link(Cellular(true, 41), 115200);
    CUniversalModemPS sheet(link.Modem(), nullptr);
    DriveModal(sheet, [&] {
        ASSERT_TRUE(Await(&sheet, [&] { return sheet.IsRead() && Idle(sheet); }));
        CModemPage& cell = sheet.Page(EModemPage::Cellular);
        ASSERT_TRUE(ShowPage(sheet, cell));
        cell.TypePin(L"1234");
        ASSERT_TRUE(cell.OnEnterPin());
        ASSERT_TRUE(Await(&sheet, [&] { return Idle(sheet) && !cell.Reason().empty(); }));
        EXPECT_EQ(cell.Reason(), LoadResString(IDS_MODEM_PIN_ACCEPTED));
        EXPECT_EQ(Reading(cell, IDS_MODEM_SIM_STATE), LoadResString(IDS_MODEM_SIM_READY));
        sheet.EndDialog(2);
    });
}

TEST_F(ModemSheet, ARadioFallingSilentInApplyNamesTheSettingAndKeepsTheUsersValues) {
    ModemSimLink link(Uhf(), 115200);
    const uikit::CMessageBoxResponder boxes;
    CUniversalModemPS sheet(link.Modem(), nullptr);
    const int result = DriveModal(sheet, [&] {
        ASSERT_TRUE(Await(&sheet, [&] { return sheet.IsRead() && Idle(sheet); }));
        CModemPage& radio = sheet.Page(EModemPage::Radio);
        ASSERT_TRUE(ShowPage(sheet, radio));
        ASSERT_TRUE(radio.Edit(L"frequency", L"440.125"));
        ASSERT_TRUE(radio.Edit(L"power", L"500"));
        rcvsim::ModemFaults plan;
        plan.silentCommands.push_back("SL@P");
        link.sim->SetFaults(plan);
        ASSERT_TRUE(Apply(sheet));
        EXPECT_FALSE(sheet.LastApplySucceeded());
        ASSERT_EQ(boxes.Requests().size(), 1u) << "one error";
        const std::string text = boxes.Requests()[0].text.ToUtf8() + boxes.Requests()[0].details.ToUtf8();
        EXPECT_NE(text.find(LoadResString(IDS_MODEM_POWER).ToUtf8()), std::string::npos) << text;
        EXPECT_NE(text.find(LoadResString(IDS_MODEM_FREQUENCY).ToUtf8()), std::string::npos) << "written before: " << text;
        EXPECT_TRUE(sheet.IsModalRunning()) << "the sheet stays open";
        EXPECT_EQ(Reading(radio, IDS_MODEM_FREQUENCY), L"440.125") << "the user's value kept";
        sheet.EndDialog(2);
    });
    EXPECT_EQ(result, 2);
}

}  // namespace
