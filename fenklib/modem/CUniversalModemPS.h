#pragma once
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/frame/CFenkPropertySheet.h"
#include "fenklib/frame/DialogTemplate.h"
#include "fenklib/modemctl/CModemMate.h"

class QTimer;
class QTreeWidget;

// What the sheet's pages share: the modem and its one command object. Each page's jobs run on
// the page's own worker, so every job takes the lock before it talks to the modem.
struct MODEM_SHEET_STATE {
    explicit MODEM_SHEET_STATE(basekit::CSmartPtr<devio::IModem> link) : modem(link), mate(std::move(link)) {}
    basekit::CSmartPtr<devio::IModem> modem;
    devio::CModemMate mate;
    std::mutex lock;
};

// Everything the sheet reads when it opens.
struct MODEM_READING {
    devio::EModemFamily family = devio::EModemFamily::Unknown;
    devio::MODEM_SETTINGS settings;
    std::vector<devio::RADIO_CHANNEL> channels;
    devio::RADIO_BAND band;
};

enum class EModemPage { General, Radio, Channels, Cellular };

// One page of the modem sheet: a column of the family's settings (label, value), and what the
// page adds of its own (the channel list, the PIN, the live readings). The page shows what the
// sheet read, checks what the user typed before anything is sent, and on OK or Apply writes
// only the settings that changed, then shows what the modem read back.
class CModemPage : public CFenkPropertyPage {
public:
    CModemPage(std::shared_ptr<MODEM_SHEET_STATE> state, EModemPage kind);
    ~CModemPage() override;

    bool NeedsReceiver() const override { return false; }
    bool OnSetActive() override;
    bool OnKillActive() override;
    bool OnApply() override;
    void UpdateControls() override;

    EModemPage Kind() const { return m_kind; }
    // The sheet hands over what it read.
    void Show(const MODEM_READING& reading);
    bool IsRead() const { return m_read; }

    // For tests and the host's tour: every value the page shows, "Name" and value.
    std::vector<std::pair<basekit::ustring, basekit::ustring>> Readings() const;
    // As if the user had typed or chosen this value for a setting; false when the page has no such setting.
    bool Edit(std::wstring_view key, const basekit::ustring& text);
    // The reason the page refuses what its controls hold now; empty when it would write.
    basekit::ustring Refusal() const;
    const std::vector<devio::RADIO_CHANNEL>& Channels() const { return m_channels; }
    void SetChannels(std::vector<devio::RADIO_CHANNEL> channels);
    // Cellular: sends the PIN typed in the PIN box (a job); false when refused at the control.
    bool OnEnterPin();
    void TypePin(const basekit::ustring& pin);
    // What the page last said about the user's input (a refusal, the PIN's answer).
    basekit::ustring Reason() const;
    // Channels: picks the active channel from the list with the channel picker.
    void OnPickChannel();
    const CDialogControls& Controls() const { return m_controls; }
    QTimer* LiveTimer() const { return m_timer; }

private:
    struct SLOT {
        const devio::MODEM_SETTING_ROW* row = nullptr;
        unsigned index = 0;
    };
    void Place(const devio::MODEM_SETTINGS& settings);
    void ShowValue(const SLOT& slot, const basekit::ustring& value);
    basekit::ustring ValueOf(const SLOT& slot) const;
    devio::MODEM_SETTINGS Wanted() const;
    std::optional<devio::MODEM_CHECK> FirstRefusal(unsigned* control) const;
    void ShowRefusal();
    void ShowChannelList();
    void AddChannel();
    void RemoveChannel();
    void Refresh();
    void ShowLive(const basekit::ustring& text);
    void PublishReadings();

    std::shared_ptr<MODEM_SHEET_STATE> m_state;
    EModemPage m_kind;
    CDialogControls m_controls;
    std::vector<SLOT> m_slots;
    devio::MODEM_SETTINGS m_shown;                   // the page's settings as read back last
    std::vector<devio::RADIO_CHANNEL> m_channels;    // as the list shows them
    std::vector<devio::RADIO_CHANNEL> m_readChannels;
    devio::RADIO_BAND m_band;
    bool m_read = false;
    bool m_active = false;
    bool m_linkDead = false;
    bool m_refreshing = false;   // the job running is a live reading
    QTimer* m_timer = nullptr;
};

// The universal modem sheet over a modem link: when it opens a job finds the modem's family
// (probing the port, or the family chosen in the settings) and reads everything; a port where
// nothing answers ends the sheet with 3 after its message. Only the pages of the family are
// shown: General always, Radio and Channels for a UHF radio, Cellular for a cellular modem.
class CUniversalModemPS : public CFenkPropertySheet {
public:
    CUniversalModemPS(basekit::CSmartPtr<devio::IModem> modem, QWidget* parent);
    ~CUniversalModemPS() override;

    bool NeedsReceiver() const override { return false; }
    bool OnInitDialog() override;

    devio::EModemFamily Family() const { return m_family; }
    bool IsRead() const { return m_family != devio::EModemFamily::Unknown; }
    CModemPage& Page(EModemPage kind);
    // The pages shown, in tab order.
    std::vector<CModemPage*> ShownPages();

private:
    std::shared_ptr<MODEM_SHEET_STATE> m_state;
    CModemPage m_general, m_radio, m_channels, m_cellular;
    devio::EModemFamily m_family = devio::EModemFamily::Unknown;
};
