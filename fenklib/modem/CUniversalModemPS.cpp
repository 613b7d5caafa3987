#include "fenklib/modem/CUniversalModemPS.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/frame/WideLayout.h"
#include "fenklib/modem/CChannelsListDlg.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

using basekit::ustring;
using namespace devio;

namespace {

constexpr unsigned kSlots = 10;
enum : unsigned {
    IDC_VALUE = 100,    // + slot: the value as text
    IDC_CHOICE = 130,   // + slot: the value of a setting with choices
    IDC_LABEL = 160,    // + slot
    IDC_REASON = 190,
    IDC_PORT_LABEL, IDC_PORT, IDC_RATE_LABEL, IDC_RATE, IDC_FAMILY_LABEL, IDC_FAMILY,
    IDC_LIST = 200, IDC_CH_NUMBER, IDC_CH_FREQ, IDC_CH_SPACING, IDC_CH_POWER, IDC_CH_ADD, IDC_CH_REMOVE, IDC_CH_PICK,
    IDC_CH_LABEL = 210,   // + 1..4: labels of the entry's boxes
    IDC_PIN = 220, IDC_PIN_LABEL, IDC_PIN_ENTER, IDC_BARS_LABEL, IDC_BARS,
};

constexpr short kRow = 16;
constexpr short Y(int row) { return static_cast<short>(6 + row * kRow); }
constexpr short kWidth = 236;

#define MODEM_SLOT(i)                                                                                          \
    DLG_ITEM{IDC_LABEL + (i), CtlKind::Static, 0, 6, static_cast<short>(Y(i) + 2), 120, 10, uikit::kAnchorTopLeft}, \
        DLG_ITEM{IDC_VALUE + (i), CtlKind::TextEdit, 0, 128, Y(i), 102, 13, uikit::kAnchorTopWide},           \
        DLG_ITEM { IDC_CHOICE + (i), CtlKind::DropList, 0, 128, Y(i), 102, 13, uikit::kAnchorTopWide }
#define MODEM_PAIR(row, label, value, text)                                                                        \
    DLG_ITEM{label, CtlKind::Static, text, 6, static_cast<short>(Y(row) + 2), 120, 10, uikit::kAnchorTopLeft}, \
        DLG_ITEM { value, CtlKind::Static, 0, 128, static_cast<short>(Y(row) + 2), 102, 10, uikit::kAnchorTopWide }
#define MODEM_REASON(row) \
    DLG_ITEM { IDC_REASON, CtlKind::Static, 0, 6, Y(row), 224, 20, uikit::kAnchorTopWide }

constexpr DLG_ITEM kGeneralItems[] = {
    MODEM_SLOT(0), MODEM_SLOT(1), MODEM_SLOT(2), MODEM_SLOT(3), MODEM_SLOT(4),
    MODEM_PAIR(5, IDC_FAMILY_LABEL, IDC_FAMILY, IDS_MODEM_FAMILY),
    MODEM_PAIR(6, IDC_PORT_LABEL, IDC_PORT, IDS_MODEM_PORT),
    MODEM_PAIR(7, IDC_RATE_LABEL, IDC_RATE, IDS_MODEM_LINE_RATE),
    MODEM_REASON(8),
};
constexpr DLG_TEMPLATE kGeneral{IDD_MODEM_GENERAL, kWidth, Y(10), kGeneralItems};
constexpr auto kGeneralWideItems = Widened(kGeneralItems);
constexpr DLG_TEMPLATE kGeneralWide{IDD_MODEM_GENERAL_WIDE, kWidth + kWideGrow, Y(10), kGeneralWideItems};

constexpr DLG_ITEM kRadioItems[] = {
    MODEM_SLOT(0), MODEM_SLOT(1), MODEM_SLOT(2), MODEM_SLOT(3), MODEM_SLOT(4),
    MODEM_SLOT(5), MODEM_SLOT(6), MODEM_SLOT(7), MODEM_SLOT(8), MODEM_SLOT(9),
    MODEM_REASON(10),
};
constexpr DLG_TEMPLATE kRadio{IDD_MODEM_RADIO, kWidth, Y(12), kRadioItems};
constexpr auto kRadioWideItems = Widened(kRadioItems);
constexpr DLG_TEMPLATE kRadioWide{IDD_MODEM_RADIO_WIDE, kWidth + kWideGrow, Y(12), kRadioWideItems};

#define MODEM_ENTRY(n, id, text)                                                                                    \
    DLG_ITEM{IDC_CH_LABEL + (n), CtlKind::Static, text, static_cast<short>(6 + ((n) - 1) * 56), Y(8), 54, 10,      \
             uikit::kAnchorTopLeft},                                                                                \
        DLG_ITEM { id, CtlKind::TextEdit, 0, static_cast<short>(6 + ((n) - 1) * 56), static_cast<short>(Y(8) + 11), 54, 13, \
                   uikit::kAnchorTopLeft }
constexpr DLG_ITEM kChannelsItems[] = {
    MODEM_SLOT(0), MODEM_SLOT(1), MODEM_SLOT(2),
    {IDC_LIST, CtlKind::ListView, 0, 6, Y(3), 224, 78, uikit::kAnchorFill},
    MODEM_ENTRY(1, IDC_CH_NUMBER, IDS_MODEM_COL_CHANNEL),
    MODEM_ENTRY(2, IDC_CH_FREQ, IDS_MODEM_COL_FREQUENCY),
    MODEM_ENTRY(3, IDC_CH_SPACING, IDS_MODEM_COL_SPACING),
    MODEM_ENTRY(4, IDC_CH_POWER, IDS_MODEM_COL_POWER),
    {IDC_CH_ADD, CtlKind::Button, IDS_MODEM_ADD_CHANNEL, 6, Y(10), 72, 14, uikit::kAnchorBottomLeft},
    {IDC_CH_REMOVE, CtlKind::Button, IDS_MODEM_REMOVE_CHANNEL, 82, Y(10), 72, 14, uikit::kAnchorBottomLeft},
    {IDC_CH_PICK, CtlKind::Button, IDS_MODEM_PICK_CHANNEL, 158, Y(10), 72, 14, uikit::kAnchorBottomLeft},
    MODEM_REASON(11),
};
constexpr DLG_TEMPLATE kChannels{IDD_MODEM_CHANNELS, kWidth, Y(13), kChannelsItems};
constexpr auto kChannelsWideItems = Widened(kChannelsItems);
constexpr DLG_TEMPLATE kChannelsWide{IDD_MODEM_CHANNELS_WIDE, kWidth + kWideGrow, Y(13), kChannelsWideItems};

constexpr DLG_ITEM kCellularItems[] = {
    MODEM_SLOT(0), MODEM_SLOT(1), MODEM_SLOT(2), MODEM_SLOT(3), MODEM_SLOT(4),
    MODEM_PAIR(5, IDC_BARS_LABEL, IDC_BARS, IDS_MODEM_BARS),
    {IDC_PIN_LABEL, CtlKind::Static, IDS_MODEM_PIN, 6, static_cast<short>(Y(6) + 2), 120, 10, uikit::kAnchorTopLeft},
    {IDC_PIN, CtlKind::NumberEdit, 0, 128, Y(6), 50, 13, uikit::kAnchorTopLeft},
    {IDC_PIN_ENTER, CtlKind::Button, IDS_MODEM_ENTER_PIN, 182, Y(6), 48, 14, uikit::kAnchorTopRight},
    MODEM_REASON(7),
};
constexpr DLG_TEMPLATE kCellular{IDD_MODEM_CELLULAR, kWidth, Y(9), kCellularItems};
constexpr auto kCellularWideItems = Widened(kCellularItems);
constexpr DLG_TEMPLATE kCellularWide{IDD_MODEM_CELLULAR_WIDE, kWidth + kWideGrow, Y(9), kCellularWideItems};

#undef MODEM_SLOT
#undef MODEM_PAIR
#undef MODEM_REASON
#undef MODEM_ENTRY

struct PAGE_KIND {
    unsigned titleId;
    const DLG_TEMPLATE* normal;
    const DLG_TEMPLATE* wide;
    int refreshMs;   // the live readings' period while the page is shown; 0: none
};
const PAGE_KIND& KindOf(EModemPage page) {
    static const PAGE_KIND kinds[] = {
        {IDS_PAGE_MODEM_GENERAL, &kGeneral, &kGeneralWide, 0},
        {IDS_PAGE_MODEM_RADIO, &kRadio, &kRadioWide, 1000},
        {IDS_PAGE_MODEM_CHANNELS, &kChannels, &kChannelsWide, 0},
        {IDS_PAGE_MODEM_CELLULAR, &kCellular, &kCellularWide, 2000},
    };
    return kinds[static_cast<int>(page)];
}

// Which of the family's settings a page shows.
bool OnPage(EModemPage page, const MODEM_SETTING_ROW& row) {
    const std::wstring_view key = row.key;
    const bool channel = key == L"channel_list" || key == L"active_channel" || key == L"default_channel";
    switch (page) {
    case EModemPage::General: return row.identity;
    case EModemPage::Channels: return channel;
    case EModemPage::Radio:
    case EModemPage::Cellular: return !row.identity && !channel;
    }
    return false;
}

ustring Text(QWidget* w) {
    if (auto* edit = qobject_cast<QLineEdit*>(w)) return ustring::FromQString(edit->text().trimmed());
    if (auto* label = qobject_cast<QLabel*>(w)) return ustring::FromQString(label->text());
    return {};
}

ustring ChoiceText(const MODEM_SETTING_ROW& row, const ustring& value) {
    const SETTING_CHOICE* c = row.FindChoice(value);
    return c && c->labelId ? LoadResString(c->labelId) : value;
}

ustring ChannelText(const RADIO_CHANNEL& c) {
    return ustring::Format(LoadResString(IDS_MODEM_FMT_CHANNEL).c_str(), modemreply::FormatFixed(c.frequencyMHz, 5).c_str(),
                           modemreply::FormatFixed(c.spacingKHz, 1).c_str(), ustring::Format(L"%d", c.powerMw).c_str());
}

}  // namespace

CModemPage::CModemPage(std::shared_ptr<MODEM_SHEET_STATE> state, EModemPage kind)
    : CFenkPropertyPage({}, CLayoutFactory::Choose(*KindOf(kind).normal, KindOf(kind).wide).number,
                        LoadResString(KindOf(kind).titleId)),
      m_state(std::move(state)),
      m_kind(kind),
      m_controls(CLayoutFactory::Build(this, *KindOf(kind).normal, KindOf(kind).wide)) {
    for (unsigned i = 0; i < kSlots; ++i) {
        if (!m_controls.Has(IDC_VALUE + i)) break;
        auto* edit = m_controls.Get<QLineEdit>(IDC_VALUE + i);
        connect(edit, &QLineEdit::textEdited, this, [this] {
            SetModified(true);
            ShowRefusal();
        });
        connect(m_controls.Get<QComboBox>(IDC_CHOICE + i), qOverload<int>(&QComboBox::activated), this, [this] {
            SetModified(true);
            ShowRefusal();
        });
    }
    m_controls.Get<QLabel>(IDC_REASON)->setWordWrap(true);
    if (kind == EModemPage::Channels) {
        auto* list = m_controls.Get<QTreeWidget>(IDC_LIST);
        list->setHeaderLabels({LoadResString(IDS_MODEM_COL_CHANNEL).ToQString(), LoadResString(IDS_MODEM_COL_FREQUENCY).ToQString(),
                               LoadResString(IDS_MODEM_COL_SPACING).ToQString(), LoadResString(IDS_MODEM_COL_POWER).ToQString()});
        connect(list, &QTreeWidget::currentItemChanged, this, [this, list] {
            const int row = list->indexOfTopLevelItem(list->currentItem());
            if (row < 0 || row >= static_cast<int>(m_channels.size())) return;
            const RADIO_CHANNEL& c = m_channels[static_cast<size_t>(row)];
            m_controls.Get<QLineEdit>(IDC_CH_NUMBER)->setText(QString::number(c.number));
            m_controls.Get<QLineEdit>(IDC_CH_FREQ)->setText(modemreply::FormatFixed(c.frequencyMHz, 5).ToQString());
            m_controls.Get<QLineEdit>(IDC_CH_SPACING)->setText(modemreply::FormatFixed(c.spacingKHz, 1).ToQString());
            m_controls.Get<QLineEdit>(IDC_CH_POWER)->setText(QString::number(c.powerMw));
        });
        connect(m_controls.Get<QPushButton>(IDC_CH_ADD), &QPushButton::clicked, this, [this] { AddChannel(); });
        connect(m_controls.Get<QPushButton>(IDC_CH_REMOVE), &QPushButton::clicked, this, [this] { RemoveChannel(); });
        connect(m_controls.Get<QPushButton>(IDC_CH_PICK), &QPushButton::clicked, this, [this] { OnPickChannel(); });
    }
    if (kind == EModemPage::Cellular)
        connect(m_controls.Get<QPushButton>(IDC_PIN_ENTER), &QPushButton::clicked, this, [this] { OnEnterPin(); });
    if (KindOf(kind).refreshMs > 0) {
        m_timer = new QTimer(this);
        m_timer->setInterval(KindOf(kind).refreshMs);
        connect(m_timer, &QTimer::timeout, this, [this] { Refresh(); });
    }
}

CModemPage::~CModemPage() { DestroyWindow(); }

void CModemPage::Show(const MODEM_READING& reading) {
    m_band = reading.band;
    Place(reading.settings);
    if (m_kind == EModemPage::General) {
        const CModemMate& mate = m_state->mate;
        m_controls.Get<QLabel>(IDC_FAMILY)->setText(LoadResString(mate.Table().nameId).ToQString());
        const auto address = m_state->modem->GetPort() ? m_state->modem->GetPort()->GetAddress() : nullptr;
        m_controls.Get<QLabel>(IDC_PORT)->setText(address ? address->GetName().ToQString() : QString());
        m_controls.Get<QLabel>(IDC_RATE)->setText(QString::number(m_state->modem->GetLineRate()));
    }
    if (m_kind == EModemPage::Channels) {
        m_readChannels = reading.channels;
        SetChannels(reading.channels);
    }
    m_read = true;
    SetModified(false);
    UpdateControls();
    PublishReadings();
}

// A host that does not know this class (the utility's tour) reads the page's values here.
void CModemPage::PublishReadings() {
    QStringList lines;
    for (const auto& [name, value] : Readings()) lines << ustring::Format(L"%s: %s", name.c_str(), value.c_str()).ToQString();
    setProperty("fenkReadings", lines);
}

// Each slot takes the next setting of the page, in the family's table order.
void CModemPage::Place(const MODEM_SETTINGS& settings) {
    m_slots.clear();
    m_shown.clear();
    for (const MODEM_SETTING_ROW* row : m_state->mate.Rows()) {
        const MODEM_VALUE* value = FindValue(settings, row->key);
        if (!OnPage(m_kind, *row) || !value || !value->supported || !m_controls.Has(IDC_VALUE + m_slots.size())) continue;
        const SLOT slot{row, static_cast<unsigned>(m_slots.size())};
        m_slots.push_back(slot);
        m_shown.push_back(*value);
        const ustring name = LoadResString(row->labelId);
        const bool units = row->units && *row->units;
        m_controls.Get<QLabel>(IDC_LABEL + slot.index)
            ->setText(units ? ustring::Format(LoadResString(IDS_MODEM_FMT_LABEL_UNITS).c_str(), name.c_str(), row->units).ToQString()
                            : name.ToQString());
        auto* combo = m_controls.Get<QComboBox>(IDC_CHOICE + slot.index);
        const bool choice = row->kind == ESettingKind::Choice && row->Writable();
        combo->clear();
        if (choice)
            for (const SETTING_CHOICE& c : row->choices)
                combo->addItem(ChoiceText(*row, c.value).ToQString(), QString::fromWCharArray(c.value));
        combo->setVisible(choice);
        m_controls.Item(IDC_VALUE + slot.index)->setVisible(!choice);
        m_controls.Get<QLineEdit>(IDC_VALUE + slot.index)->setReadOnly(!row->Writable());
        ShowValue(slot, value->value);
    }
    for (auto i = static_cast<unsigned>(m_slots.size()); i < kSlots && m_controls.Has(IDC_VALUE + i); ++i) {
        m_controls.Item(IDC_LABEL + i)->hide();
        m_controls.Item(IDC_VALUE + i)->hide();
        m_controls.Item(IDC_CHOICE + i)->hide();
    }
}

void CModemPage::ShowValue(const SLOT& slot, const ustring& value) {
    auto* combo = m_controls.Get<QComboBox>(IDC_CHOICE + slot.index);
    if (combo->isVisibleTo(this)) {
        const int index = combo->findData(value.ToQString());
        if (index >= 0) combo->setCurrentIndex(index);
        return;
    }
    const ustring shown = slot.row->kind == ESettingKind::Choice ? ChoiceText(*slot.row, value) : value;
    m_controls.Get<QLineEdit>(IDC_VALUE + slot.index)->setText(shown.ToQString());
}

ustring CModemPage::ValueOf(const SLOT& slot) const {
    auto* combo = m_controls.Get<QComboBox>(IDC_CHOICE + slot.index);
    if (combo->isVisibleTo(this)) return ustring::FromQString(combo->currentData().toString());
    return Text(m_controls.Item(IDC_VALUE + slot.index));
}

// The values to write: what the user changed, each as its check gave it back.
MODEM_SETTINGS CModemPage::Wanted() const {
    MODEM_SETTINGS wanted = m_shown;
    for (const SLOT& slot : m_slots) {
        if (!slot.row->Writable()) continue;
        const ustring typed = ValueOf(slot);
        MODEM_VALUE& v = wanted[slot.index];
        if (typed == v.value) continue;
        const MODEM_CHECK check = CheckSettingValue(*slot.row, typed, m_band);
        if (check.ok) v.value = check.value;
    }
    return wanted;
}

std::optional<MODEM_CHECK> CModemPage::FirstRefusal(unsigned* control) const {
    for (const SLOT& slot : m_slots) {
        if (!slot.row->Writable()) continue;
        const ustring typed = ValueOf(slot);
        if (typed == m_shown[slot.index].value) continue;
        const MODEM_CHECK check = CheckSettingValue(*slot.row, typed, m_band);
        if (!check.ok) {
            if (control) *control = IDC_VALUE + slot.index;
            return check;
        }
    }
    if (m_kind == EModemPage::Channels) {
        if (MODEM_CHECK count = CheckChannelCount(m_channels.size()); !count.ok) return count;
        for (const RADIO_CHANNEL& c : m_channels)
            if (MODEM_CHECK check = CheckChannel(c, m_band); !check.ok) return check;
    }
    return std::nullopt;
}

ustring CModemPage::Refusal() const {
    const auto refusal = FirstRefusal(nullptr);
    return refusal ? refusal->reason : ustring();
}

void CModemPage::ShowRefusal() { m_controls.Get<QLabel>(IDC_REASON)->setText(Refusal().ToQString()); }

bool CModemPage::Edit(std::wstring_view key, const ustring& text) {
    for (const SLOT& slot : m_slots) {
        if (slot.row->key != key) continue;
        auto* combo = m_controls.Get<QComboBox>(IDC_CHOICE + slot.index);
        if (combo->isVisibleTo(this)) {
            const int index = combo->findData(text.ToQString());
            if (index < 0) return false;
            combo->setCurrentIndex(index);
        } else {
            m_controls.Get<QLineEdit>(IDC_VALUE + slot.index)->setText(text.ToQString());
        }
        SetModified(true);
        ShowRefusal();
        return true;
    }
    return false;
}

std::vector<std::pair<ustring, ustring>> CModemPage::Readings() const {
    std::vector<std::pair<ustring, ustring>> out;
    for (const SLOT& slot : m_slots) {
        auto* combo = m_controls.Get<QComboBox>(IDC_CHOICE + slot.index);
        const ustring value = combo->isVisibleTo(this) ? ustring::FromQString(combo->currentText()) : Text(m_controls.Item(IDC_VALUE + slot.index));
        out.emplace_back(Text(m_controls.Item(IDC_LABEL + slot.index)), value);
    }
    const auto pair = [&](unsigned label, unsigned value) {
        out.emplace_back(Text(m_controls.Item(label)), Text(m_controls.Item(value)));
    };
    if (m_kind == EModemPage::General) {
        pair(IDC_FAMILY_LABEL, IDC_FAMILY);
        pair(IDC_PORT_LABEL, IDC_PORT);
        pair(IDC_RATE_LABEL, IDC_RATE);
    }
    if (m_kind == EModemPage::Cellular) pair(IDC_BARS_LABEL, IDC_BARS);
    for (const RADIO_CHANNEL& c : m_channels)
        out.emplace_back(ustring::Format(L"%s %d", LoadResString(IDS_MODEM_COL_CHANNEL).c_str(), c.number), ChannelText(c));
    return out;
}

void CModemPage::SetChannels(std::vector<RADIO_CHANNEL> channels) {
    m_channels = std::move(channels);
    ShowChannelList();
    if (m_channels != m_readChannels) SetModified(true);
    ShowRefusal();
}

void CModemPage::ShowChannelList() {
    auto* list = m_controls.Get<QTreeWidget>(IDC_LIST);
    list->clear();
    for (const RADIO_CHANNEL& c : m_channels)
        list->addTopLevelItem(new QTreeWidgetItem(QStringList{QString::number(c.number), modemreply::FormatFixed(c.frequencyMHz, 5).ToQString(),
                                                              modemreply::FormatFixed(c.spacingKHz, 1).ToQString(),
                                                              QString::number(c.powerMw)}));
}

// The entry typed below the list replaces the channel of its number, or joins the list.
void CModemPage::AddChannel() {
    auto& reason = *m_controls.Get<QLabel>(IDC_REASON);
    const auto number = modemreply::ParseInteger(Text(m_controls.Item(IDC_CH_NUMBER)));
    if (!number || *number < 0 || *number > 999999) {
        reason.setText(LoadResString(IDS_MODEM_CHANNEL_NUMBER_BAD).ToQString());
        return;
    }
    const MODEM_CHECK frequency = CheckFrequency(Text(m_controls.Item(IDC_CH_FREQ)), m_band, IDS_MODEM_COL_FREQUENCY);
    const auto spacing = modemreply::ParseQuantity(Text(m_controls.Item(IDC_CH_SPACING)), L"");
    const auto power = modemreply::ParseInteger(Text(m_controls.Item(IDC_CH_POWER)));
    if (!frequency.ok) {
        reason.setText(frequency.reason.ToQString());
        return;
    }
    const RADIO_CHANNEL entry{static_cast<int>(*number), modemreply::ParseQuantity(frequency.value, L"").value_or(0), spacing.value_or(0),
                              static_cast<int>(power.value_or(0))};
    if (const MODEM_CHECK check = CheckChannel(entry, m_band); !check.ok) {
        reason.setText(check.reason.ToQString());
        return;
    }
    std::vector<RADIO_CHANNEL> channels = m_channels;
    const auto same = std::find_if(channels.begin(), channels.end(), [&](const RADIO_CHANNEL& c) { return c.number == entry.number; });
    if (same != channels.end()) *same = entry;
    else channels.push_back(entry);
    SetChannels(std::move(channels));
}

void CModemPage::RemoveChannel() {
    auto* list = m_controls.Get<QTreeWidget>(IDC_LIST);
    const int row = list->indexOfTopLevelItem(list->currentItem());
    if (row < 0 || row >= static_cast<int>(m_channels.size())) return;
    std::vector<RADIO_CHANNEL> channels = m_channels;
    channels.erase(channels.begin() + row);
    SetChannels(std::move(channels));
}

void CModemPage::OnPickChannel() {
    std::vector<double> frequencies;
    for (const RADIO_CHANNEL& c : m_channels) frequencies.push_back(c.frequencyMHz);
    double picked = 0;
    CChannelsListDlg picker(this, frequencies, picked);
    if (picker.DoModal() != IDOK_BUTTON) return;
    const auto it = std::find_if(m_channels.begin(), m_channels.end(), [&](const RADIO_CHANNEL& c) { return c.frequencyMHz == picked; });
    if (it != m_channels.end()) Edit(L"active_channel", ustring::Format(L"%d", it->number));
}

void CModemPage::TypePin(const ustring& pin) { m_controls.Get<QLineEdit>(IDC_PIN)->setText(pin.ToQString()); }

ustring CModemPage::Reason() const { return Text(m_controls.Item(IDC_REASON)); }

bool CModemPage::OnEnterPin() {
    auto& reason = *m_controls.Get<QLabel>(IDC_REASON);
    const ustring pin = Text(m_controls.Item(IDC_PIN));
    if (const MODEM_CHECK check = CheckPin(pin); !check.ok) {
        reason.setText(check.reason.ToQString());
        return false;
    }
    // A third wrong PIN locks the SIM: the user says so, every time.
    bool confirmed = false;
    if (m_state->mate.WrongPins() >= 2) {
        if (uikit::CMessageBoxService::Show(this, LoadResString(IDS_MODEM_PIN_LAST_TRY), LoadResString(IDS_MODEM_SHEET),
                                            uikit::MB_YESNO | uikit::MB_ICONQUESTION) != uikit::IDYES)
            return false;
        confirmed = true;
    }
    m_controls.Get<QLineEdit>(IDC_PIN)->clear();
    RunJob(
        [state = m_state, pin, confirmed](CJobContext&) {
            const std::lock_guard lock(state->lock);
            const EPinResult result = state->mate.EnterPin(pin, confirmed);
            return std::make_pair(result, state->mate.Read(L"sim_state"));
        },
        [this](const JOB_RESULT<std::pair<EPinResult, ustring>>& r) {
            if (!r.Ok()) return;
            m_controls.Get<QLabel>(IDC_REASON)
                ->setText(LoadResString(r.value->first == EPinResult::Accepted ? IDS_MODEM_PIN_ACCEPTED : IDS_MODEM_PIN_WRONG).ToQString());
            for (const SLOT& slot : m_slots)
                if (slot.row->key == std::wstring_view(L"sim_state")) {
                    m_shown[slot.index].value = r.value->second;
                    ShowValue(slot, r.value->second);
                }
        });
    return true;
}

bool CModemPage::OnSetActive() {
    m_active = true;
    if (m_timer && !m_linkDead) m_timer->start();
    return true;
}

bool CModemPage::OnKillActive() {
    m_active = false;
    if (m_timer) m_timer->stop();
    return true;
}

// The live readings: one job at a time, none while the page writes; a link that died stops
// them after the one message the failed job showed.
void CModemPage::Refresh() {
    if (!m_read || IsBusy() || m_linkDead || !m_active) return;
    m_refreshing = true;
    const bool radio = m_kind == EModemPage::Radio;
    RunJob(
        [state = m_state, radio](CJobContext&) {
            const std::lock_guard lock(state->lock);
            std::vector<std::pair<ustring, ustring>> values;
            ustring bars;
            if (radio) {
                const auto dbm = state->mate.ReadFieldStrength();
                values.emplace_back(L"field_strength", dbm ? ustring::Format(L"%d", *dbm) : ustring());
            } else {
                const MODEM_SIGNAL signal = state->mate.ReadSignal();
                values.emplace_back(L"signal", signal.dbm ? ustring::Format(L"%d", *signal.dbm) : ustring());
                bars = ustring::Format(LoadResString(IDS_MODEM_FMT_BARS).c_str(), signal.bars);
                for (const wchar_t* key : {L"registration", L"operator", L"sim_state"}) values.emplace_back(key, state->mate.Read(key));
            }
            return std::make_pair(values, bars);
        },
        [this](const JOB_RESULT<std::pair<std::vector<std::pair<ustring, ustring>>, ustring>>& r) {
            m_refreshing = false;
            if (r.outcome == JobOutcome::Failed) {
                m_linkDead = true;
                if (m_timer) m_timer->stop();
                return;
            }
            if (!r.Ok()) return;
            for (const auto& [key, value] : r.value->first)
                for (const SLOT& slot : m_slots)
                    if (slot.row->key == key) {
                        m_shown[slot.index].value = value;
                        ShowValue(slot, value);
                    }
            if (!r.value->second.empty()) ShowLive(r.value->second);
            PublishReadings();
        });
}

void CModemPage::ShowLive(const ustring& text) {
    if (m_controls.Has(IDC_BARS)) m_controls.Get<QLabel>(IDC_BARS)->setText(text.ToQString());
}

bool CModemPage::OnApply() {
    // A live reading gives way: starting the write stops it (its result is dropped).
    if (IsBusy() && !m_refreshing) return false;
    m_refreshing = false;
    if (!m_read) return true;
    unsigned control = 0;
    if (const auto refusal = FirstRefusal(&control)) {
        m_controls.Get<QLabel>(IDC_REASON)->setText(refusal->reason.ToQString());
        if (control) m_controls.Item(control)->setFocus();
        uikit::CMessageBoxService::Show(this, refusal->reason, LoadResString(IDS_MODEM_SHEET), uikit::MB_OK | uikit::MB_ICONEXCLAMATION);
        return false;
    }
    const MODEM_SETTINGS wanted = Wanted();
    const bool listChanged = m_kind == EModemPage::Channels && m_channels != m_readChannels;
    const bool changed = listChanged || std::any_of(m_slots.begin(), m_slots.end(), [&](const SLOT& s) {
                             return wanted[s.index].value != m_shown[s.index].value;
                         });
    if (!changed) {
        SetModified(false);
        return true;
    }
    if (m_timer) m_timer->stop();
    ApplyAsJob(
        [this, state = m_state, shown = m_shown, wanted, listChanged, channels = m_channels](CJobContext& job) {
            const std::lock_guard lock(state->lock);
            std::vector<RADIO_CHANNEL> readBack;
            if (listChanged) {
                state->mate.WriteChannels(channels);
                readBack = state->mate.ReadChannels();
            }
            MODEM_SETTINGS after = state->mate.Write(shown, wanted);
            job.Deliver(std::make_pair(std::move(after), std::move(readBack)), [this, listChanged](auto written) {
                m_shown = written.first;
                for (const SLOT& slot : m_slots) ShowValue(slot, m_shown[slot.index].value);
                if (listChanged) {
                    m_readChannels = written.second;
                    m_channels = written.second;
                    ShowChannelList();
                }
                PublishReadings();
            });
        },
        [this] {
            SetModified(false);
            ShowRefusal();
            if (m_timer && m_active && !m_linkDead) m_timer->start();
        });
    return true;
}

void CModemPage::UpdateControls() {
    const bool usable = m_read && !IsBusy();
    for (const SLOT& slot : m_slots) {
        m_controls.Item(IDC_VALUE + slot.index)->setEnabled(usable);
        m_controls.Item(IDC_CHOICE + slot.index)->setEnabled(usable && slot.row->Writable());
    }
    for (unsigned id : {IDC_CH_ADD, IDC_CH_REMOVE, IDC_CH_PICK, IDC_LIST, IDC_CH_NUMBER, IDC_CH_FREQ, IDC_CH_SPACING, IDC_CH_POWER, IDC_PIN,
                        IDC_PIN_ENTER})
        if (m_controls.Has(id)) m_controls.Item(id)->setEnabled(usable);
    if (m_kind == EModemPage::Channels && usable)
        m_controls.Item(IDC_CH_PICK)->setEnabled(!m_channels.empty());
    if (GetSheet())
        if (QPushButton* ok = GetSheet()->GetButton(1)) ok->setEnabled(!IsBusy());
}

CUniversalModemPS::CUniversalModemPS(basekit::CSmartPtr<IModem> modem, QWidget* parent)
    : CFenkPropertySheet({}, LoadResString(IDS_MODEM_SHEET), parent, L"CUniversalModemPS"),
      m_state(std::make_shared<MODEM_SHEET_STATE>(std::move(modem))),
      m_general(m_state, EModemPage::General),
      m_radio(m_state, EModemPage::Radio),
      m_channels(m_state, EModemPage::Channels),
      m_cellular(m_state, EModemPage::Cellular) {
    AddPage(&m_general);
}

CUniversalModemPS::~CUniversalModemPS() { DestroyWindow(); }

CModemPage& CUniversalModemPS::Page(EModemPage kind) {
    CModemPage* pages[] = {&m_general, &m_radio, &m_channels, &m_cellular};
    return *pages[static_cast<int>(kind)];
}

std::vector<CModemPage*> CUniversalModemPS::ShownPages() {
    std::vector<CModemPage*> out;
    for (int i = 0; i < GetPageCount(); ++i) out.push_back(static_cast<CModemPage*>(GetPage(i)));
    return out;
}

bool CUniversalModemPS::OnInitDialog() {
    CFenkPropertySheet::OnInitDialog();
    if (!m_state->modem) {
        EndWindow(kLauncherFailed);
        return true;
    }
    RunJob(
        [state = m_state](CJobContext&) {
            const std::lock_guard lock(state->lock);
            MODEM_READING reading;
            reading.family = state->mate.Detect();
            reading.settings = state->mate.ReadAll();
            reading.band = state->mate.Band();
            if (reading.family == EModemFamily::Uhf) reading.channels = state->mate.ReadChannels();
            return reading;
        },
        [this](const JOB_RESULT<MODEM_READING>& r) {
            if (!r.Ok()) {
                if (r.outcome == JobOutcome::Failed) EndWindow(kLauncherFailed);
                return;
            }
            m_family = r.value->family;
            if (m_family == EModemFamily::Uhf) {
                AddPage(&m_radio);
                AddPage(&m_channels);
            } else {
                AddPage(&m_cellular);
            }
            for (CModemPage* page : ShownPages()) page->Show(*r.value);
        });
    return true;
}
