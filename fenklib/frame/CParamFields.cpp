#include "fenklib/frame/CParamFields.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QSignalBlocker>
#include <QSlider>
#include <QTreeWidget>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"

namespace {

// Numbers a person reads and types are in the user's locale; the receiver gets them from the
// catalogue in the C locale.
QString RealText(double v) { return QLocale().toString(v, 'g', 10); }

QString LabelText(const PARAM_FIELD& f, const QVariant& v) {
    if (!f.choices.empty()) {
        const int i = v.toInt();
        return i >= 0 && i < static_cast<int>(f.choices.size()) ? LoadResString(f.choices[static_cast<size_t>(i)]).ToQString() : QString();
    }
    if (v.typeId() == QMetaType::Double) return RealText(v.toDouble());
    if (v.typeId() == QMetaType::Bool) return LoadResString(v.toBool() ? IDS_ON_TEXT : IDS_OFF_TEXT).ToQString();
    return v.toString();
}

}  // namespace

namespace field {

PARAM_FIELD SatLocks(unsigned control, const wchar_t* system) {
    return {control, FieldKind::CheckList,
            [system](devio::CVokReceiverMate& mate) {
                QVariantList list;
                for (const auto& lock : mate.GetSatLocks(system)) list.push_back(QVariantList{lock.satellite, lock.locked});
                return QVariant(list);
            },
            [system](devio::CVokReceiverMate& mate, const QVariant& v) {
                std::vector<devio::vok::SAT_LOCK> locks;
                for (const QVariant& item : v.toList()) locks.push_back({item.toList().value(0).toInt(), item.toList().value(1).toBool()});
                mate.SetSatLocks(system, locks);
            },
            {}};
}

PARAM_FIELD OutputMasks(unsigned control) {
    PARAM_FIELD f{control, FieldKind::NumberList,
                  [](devio::CVokReceiverMate& mate) {
                      QVariantList rows;
                      for (const devio::vok::EDev port : mate.ListOutputPorts())
                          rows.push_back(QVariantList{devio::vok::ToKeyword(port).ToQString(), mate.Get(devio::par::OutElm, port)});
                      return QVariant(rows);
                  },
                  nullptr, {}};
    f.writeChanged = [](devio::CVokReceiverMate& mate, const QVariant& was, const QVariant& now) {
        const QVariantList before = was.toList();
        for (const QVariant& row : now.toList()) {
            const QVariantList r = row.toList();
            if (before.contains(row)) continue;   // this output's mask is as it was read
            mate.Set(devio::par::OutElm, r.value(1).toInt(), basekit::ustring::FromQString(r.value(0).toString()));
        }
    };
    return f;
}

PARAM_FIELD GpsL5Lock(unsigned control) {
    return {control, FieldKind::Check, [](devio::CVokReceiverMate& mate) { return QVariant(mate.GetGpsL5Lock()); },
            [](devio::CVokReceiverMate& mate, const QVariant& v) { mate.SetGpsL5Lock(v.toBool()); }, {}};
}

}  // namespace field

void CParamFields::Prepare(const CDialogControls& controls) const {
    for (const PARAM_FIELD& f : m_fields) {
        if (f.kind != FieldKind::Choice) continue;
        auto* combo = controls.Get<QComboBox>(f.control);
        combo->clear();
        for (const unsigned text : f.choices) combo->addItem(LoadResString(text).ToQString());
    }
}

CParamFields::Values CParamFields::Read(devio::CVokReceiverMate& mate) const {
    Values values;
    values.reserve(m_fields.size());
    for (const PARAM_FIELD& f : m_fields) values.push_back(f.read(mate));
    return values;
}

void CParamFields::Show(const CDialogControls& controls, const Values& values) const {
    for (size_t i = 0; i < m_fields.size() && i < values.size(); ++i) {
        const PARAM_FIELD& f = m_fields[i];
        const QVariant& v = values[i];
        switch (f.kind) {
            case FieldKind::Check: controls.Get<QCheckBox>(f.control)->setChecked(v.toBool()); break;
            case FieldKind::Choice: controls.Get<QComboBox>(f.control)->setCurrentIndex(v.toInt()); break;
            case FieldKind::Integer: controls.Get<QLineEdit>(f.control)->setText(QString::number(v.toInt())); break;
            case FieldKind::Real: controls.Get<QLineEdit>(f.control)->setText(RealText(v.toDouble())); break;
            case FieldKind::Text: controls.Get<QLineEdit>(f.control)->setText(v.toString()); break;
            case FieldKind::Label: controls.Get<QLabel>(f.control)->setText(LabelText(f, v)); break;
            case FieldKind::Level: controls.Get<QSlider>(f.control)->setValue(v.toInt()); break;
            case FieldKind::NumberList: {
                auto* list = controls.Get<QTreeWidget>(f.control);
                const QSignalBlocker quiet(list);
                list->clear();
                for (const QVariant& entry : v.toList()) {
                    auto* item = new QTreeWidgetItem(list, QStringList{entry.toList().value(0).toString(),
                                                                       QString::number(entry.toList().value(1).toInt())});
                    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
                }
                break;
            }
            case FieldKind::CheckList: {
                auto* list = controls.Get<QListWidget>(f.control);
                const QSignalBlocker quiet(list);   // filling is not an edit
                list->clear();
                for (const QVariant& entry : v.toList()) {
                    const int number = entry.toList().value(0).toInt();
                    auto* item = new QListWidgetItem(
                        QString::fromStdWString(basekit::ustring::Format(LoadResString(IDS_FMT_SATELLITE_NUMBER).c_str(), number)), list);
                    item->setData(Qt::UserRole, number);
                    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
                    item->setCheckState(entry.toList().value(1).toBool() ? Qt::Checked : Qt::Unchecked);
                }
                break;
            }
        }
    }
}

std::optional<CParamFields::Values> CParamFields::Collect(const CDialogControls& controls) const {
    Values values;
    for (const PARAM_FIELD& f : m_fields) {
        bool ok = true;
        switch (f.kind) {
            case FieldKind::Check: values.emplace_back(controls.Get<QCheckBox>(f.control)->isChecked()); break;
            case FieldKind::Choice: values.emplace_back(controls.Get<QComboBox>(f.control)->currentIndex()); break;
            case FieldKind::Integer: values.emplace_back(QLocale().toInt(controls.Get<QLineEdit>(f.control)->text(), &ok)); break;
            case FieldKind::Real: values.emplace_back(QLocale().toDouble(controls.Get<QLineEdit>(f.control)->text(), &ok)); break;
            case FieldKind::Text: values.emplace_back(controls.Get<QLineEdit>(f.control)->text()); break;
            case FieldKind::Label: values.emplace_back(); break;
            case FieldKind::Level: values.emplace_back(controls.Get<QSlider>(f.control)->value()); break;
            case FieldKind::NumberList: {
                const auto* list = controls.Get<QTreeWidget>(f.control);
                QVariantList rows;
                for (int i = 0; ok && i < list->topLevelItemCount(); ++i) {
                    const QTreeWidgetItem* item = list->topLevelItem(i);
                    rows.push_back(QVariantList{item->text(0), QLocale().toInt(item->text(1), &ok)});
                }
                values.emplace_back(rows);
                break;
            }
            case FieldKind::CheckList: {
                const auto* list = controls.Get<QListWidget>(f.control);
                QVariantList entries;
                for (int i = 0; i < list->count(); ++i)
                    entries.push_back(QVariantList{list->item(i)->data(Qt::UserRole).toInt(), list->item(i)->checkState() == Qt::Checked});
                values.emplace_back(entries);
                break;
            }
        }
        if (!ok) return std::nullopt;
    }
    return values;
}

void CParamFields::WriteChanged(devio::CVokReceiverMate& mate, const Values& was, const Values& now) const {
    for (size_t i = 0; i < m_fields.size() && i < was.size() && i < now.size(); ++i) {
        if (was[i] == now[i]) continue;
        if (m_fields[i].writeChanged) m_fields[i].writeChanged(mate, was[i], now[i]);
        else if (m_fields[i].write) m_fields[i].write(mate, now[i]);
    }
}

void CParamFields::Enable(const CDialogControls& controls, bool enabled) const {
    for (const PARAM_FIELD& f : m_fields)
        if (f.kind != FieldKind::Label) controls.Item(f.control)->setEnabled(enabled);
}

void CParamFields::WatchEdits(const CDialogControls& controls, QObject* context, const std::function<void()>& changed) const {
    for (const PARAM_FIELD& f : m_fields) {
        switch (f.kind) {
            case FieldKind::Check: QObject::connect(controls.Get<QCheckBox>(f.control), &QCheckBox::clicked, context, changed); break;
            case FieldKind::Choice:
                QObject::connect(controls.Get<QComboBox>(f.control), &QComboBox::activated, context, changed);
                break;
            case FieldKind::Integer:
            case FieldKind::Real:
            case FieldKind::Text: QObject::connect(controls.Get<QLineEdit>(f.control), &QLineEdit::textEdited, context, changed); break;
            case FieldKind::CheckList:
                QObject::connect(controls.Get<QListWidget>(f.control), &QListWidget::itemChanged, context, changed);
                break;
            case FieldKind::Level: QObject::connect(controls.Get<QSlider>(f.control), &QSlider::sliderMoved, context, changed); break;
            case FieldKind::NumberList:
                QObject::connect(controls.Get<QTreeWidget>(f.control), &QTreeWidget::itemChanged, context, changed);
                break;
            case FieldKind::Label: break;
        }
    }
}
