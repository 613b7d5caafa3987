#pragma once
#include <QVariant>
#include <functional>
#include <optional>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/receiver/CVokReceiverMate.h"

// One receiver setting shown in one control: how it is read, how it is written back (nothing
// for a value that is only shown), and the kind of control that shows it.
// CheckList: a list of items each with a check (satellite locks): a QVariantList of
// QVariantList{number, checked}. Level: an integer on a slider. NumberList: one integer per
// named item in a two-column list whose second column the user edits: a QVariantList of
// QVariantList{name, number}.
enum class FieldKind { Check, Choice, Integer, Real, Text, Label, CheckList, Level, NumberList };

struct PARAM_FIELD {
    unsigned control;
    FieldKind kind;
    std::function<QVariant(devio::CVokReceiverMate&)> read;
    std::function<void(devio::CVokReceiverMate&, const QVariant&)> write;
    std::vector<unsigned> choices;   // string ids of a Choice's items, in the enumeration's order
    // A field holding several receiver values writes only those that changed (then `write` is
    // not used).
    std::function<void(devio::CVokReceiverMate&, const QVariant& was, const QVariant& now)> writeChanged = {};
};

// Fields built from catalogue rows; the row's conversion decides the control's value type.
namespace field {

template <typename Conv, typename... Args>
PARAM_FIELD Of(unsigned control, const devio::Param<Conv>& param, Args... args) {
    using V = typename Conv::Value;
    FieldKind kind = FieldKind::Text;
    if constexpr (std::is_same_v<V, bool>) kind = FieldKind::Check;
    else if constexpr (std::is_same_v<V, int>) kind = FieldKind::Integer;
    else if constexpr (std::is_same_v<V, double>) kind = FieldKind::Real;
    return {control, kind,
            [param, args...](devio::CVokReceiverMate& mate) {
                const V v = mate.Get(param, args...);
                if constexpr (std::is_same_v<V, basekit::ustring>) return QVariant(v.ToQString());
                else return QVariant::fromValue(v);
            },
            [param, args...](devio::CVokReceiverMate& mate, const QVariant& v) {
                if constexpr (std::is_same_v<V, basekit::ustring>) mate.Set(param, basekit::ustring::FromQString(v.toString()), args...);
                else mate.Set(param, v.value<V>(), args...);
            },
            {}};
}

// An enumerated row shown as a drop list; choices name its values in order.
template <typename E, typename... Args>
PARAM_FIELD Choice(unsigned control, const devio::Param<devio::conv::Enum<E>>& param, std::vector<unsigned> choices, Args... args) {
    return {control, FieldKind::Choice,
            [param, args...](devio::CVokReceiverMate& mate) { return QVariant(static_cast<int>(mate.Get(param, args...))); },
            [param, args...](devio::CVokReceiverMate& mate, const QVariant& v) { mate.Set(param, static_cast<E>(v.toInt()), args...); },
            std::move(choices)};
}

// A row the catalogue keeps as a bare keyword, shown through an enumeration's keyword table.
template <typename E, typename... Args>
PARAM_FIELD KeywordChoice(unsigned control, const devio::Param<devio::conv::Keyword>& param, std::vector<unsigned> choices, Args... args) {
    return {control, FieldKind::Choice,
            [param, args...](devio::CVokReceiverMate& mate) {
                return QVariant(static_cast<int>(devio::vok::FromKeyword<E>(mate.Get(param, args...))));
            },
            [param, args...](devio::CVokReceiverMate& mate, const QVariant& v) {
                mate.Set(param, devio::vok::ToKeyword<E>(static_cast<E>(v.toInt())), args...);
            },
            std::move(choices)};
}

// Shown only: read-only rows and states.
template <typename Conv, typename... Args>
PARAM_FIELD Shown(unsigned control, const devio::Param<Conv>& param, Args... args) {
    PARAM_FIELD f = Of(control, param, args...);
    f.kind = FieldKind::Label;
    f.write = nullptr;
    return f;
}
template <typename E, typename... Args>
PARAM_FIELD ShownChoice(unsigned control, const devio::Param<devio::conv::Enum<E>>& param, std::vector<unsigned> choices, Args... args) {
    PARAM_FIELD f = Choice(control, param, std::move(choices), args...);
    f.kind = FieldKind::Label;
    f.write = nullptr;
    return f;
}

// An integer row on a slider (volumes).
template <typename... Args>
PARAM_FIELD Level(unsigned control, const devio::Param<devio::conv::Int>& param, Args... args) {
    PARAM_FIELD f = Of(control, param, args...);
    f.kind = FieldKind::Level;
    return f;
}

// The output elevation mask of every output port the receiver lists, one row each.
PARAM_FIELD OutputMasks(unsigned control);

// A satellite lock list of "waas" or "qzss", one check per satellite.
PARAM_FIELD SatLocks(unsigned control, const wchar_t* system);
// The GPS L5 lock.
PARAM_FIELD GpsL5Lock(unsigned control);

}  // namespace field

// A window's group of fields: read together (on the worker), shown, collected back from the
// controls and written where the user changed them.
class CParamFields {
public:
    using Values = std::vector<QVariant>;

    explicit CParamFields(std::vector<PARAM_FIELD> fields) : m_fields(std::move(fields)) {}

    // Fills the drop lists with their items; once, after the layout is built.
    void Prepare(const CDialogControls& controls) const;
    Values Read(devio::CVokReceiverMate& mate) const;
    void Show(const CDialogControls& controls, const Values& values) const;
    // What the controls hold; nothing when a number cannot be read.
    std::optional<Values> Collect(const CDialogControls& controls) const;
    // Writes, in the fields' order, the values that differ from `was`.
    void WriteChanged(devio::CVokReceiverMate& mate, const Values& was, const Values& now) const;
    void Enable(const CDialogControls& controls, bool enabled) const;
    // Calls changed whenever the user edits one of the fields' controls.
    void WatchEdits(const CDialogControls& controls, QObject* context, const std::function<void()>& changed) const;

private:
    std::vector<PARAM_FIELD> m_fields;
};
