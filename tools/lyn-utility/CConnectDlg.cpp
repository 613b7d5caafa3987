#include "tools/lyn-utility/CConnectDlg.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QUrl>
#include <QUrlQuery>
#include <QFormLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "tools/lyn-utility/HostStrings.h"

namespace {
enum Kind { Simulator, Serial, Tcp };
constexpr int kRates[] = {300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 153600, 230400, 460800, 921600};

const QString kLastSerial = QStringLiteral("Connection/LastSerial");
const QString kLastTcp = QStringLiteral("Connection/LastTcp");
const QString kUsedPaths = QStringLiteral("Connection/SerialPaths");
constexpr int kMaxUsedPaths = 8;

// "serial:/dev/ttyUSB0?baud=9600" -> "/dev/ttyUSB0"
QString SerialPath(const QString& url) { return url.mid(7).section(QLatin1Char('?'), 0, 0); }

QString ReadSmall(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.read(64)).trimmed() : QString();
}
}  // namespace

QStringList CConnectDlg::PresentSerialPorts() {
    QStringList ports;
    const QDir dev(QStringLiteral("/dev"));
    for (const QString& name : dev.entryList({QStringLiteral("ttyS*"), QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*")}, QDir::System)) {
        // A built-in port the kernel found no chip for has type 0; adapters exist only when plugged in.
        if (name.startsWith(QLatin1String("ttyS")) && ReadSmall(QStringLiteral("/sys/class/tty/%1/type").arg(name)) == QLatin1String("0"))
            continue;
        ports << dev.filePath(name);
    }
    return ports;
}

CConnectDlg::CConnectDlg(QWidget* parent, const basekit::ustring& current) : QDialog(parent) {
    setWindowTitle(HostText(HS_CONNECTION).ToQString());
    m_kind = new QButtonGroup(this);
    auto* simulator = new QRadioButton(HostText(HS_SIMULATOR).ToQString(), this);
    auto* serial = new QRadioButton(HostText(HS_SERIAL).ToQString(), this);
    auto* tcp = new QRadioButton(HostText(HS_TCP).ToQString(), this);
    m_kind->addButton(simulator, Simulator);
    m_kind->addButton(serial, Serial);
    m_kind->addButton(tcp, Tcp);
    m_port = new QComboBox(this);
    m_port->setEditable(true);
    m_port->addItems(PresentSerialPorts());
    for (const QString& used : QSettings().value(kUsedPaths).toStringList())
        if (QFileInfo::exists(used) && m_port->findText(used) < 0) m_port->addItem(used);
    m_rate = new QComboBox(this);
    for (const int r : kRates) m_rate->addItem(QString::number(r), r);
    m_rate->setCurrentText(QStringLiteral("115200"));
    m_host = new QLineEdit(QStringLiteral("127.0.0.1"), this);
    m_tcpPort = new QSpinBox(this);
    m_tcpPort->setRange(1, 65535);
    m_tcpPort->setValue(4001);

    auto* form = new QFormLayout();
    form->addRow(simulator);
    form->addRow(serial);
    form->addRow(HostText(HS_SERIAL_PORT).ToQString(), m_port);
    form->addRow(HostText(HS_BAUD_RATE).ToQString(), m_rate);
    form->addRow(tcp);
    form->addRow(HostText(HS_TCP_HOST).ToQString(), m_host);
    form->addRow(HostText(HS_TCP_PORT).ToQString(), m_tcpPort);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);

    // The last link of each kind, then the current one on top of its kind.
    const QSettings settings;
    const auto fillSerial = [this](const QString& url) {
        const QUrl parsed(url);
        const QString path = SerialPath(url);
        if (!path.isEmpty()) m_port->setCurrentText(path);
        const QString rate = QUrlQuery(parsed.query()).queryItemValue(QStringLiteral("baud"));
        if (!rate.isEmpty()) m_rate->setCurrentText(rate);
    };
    const auto fillTcp = [this](const QString& url) {
        const QUrl parsed(url);
        if (!parsed.host().isEmpty()) m_host->setText(parsed.host());
        if (parsed.port() > 0) m_tcpPort->setValue(parsed.port());
    };
    fillSerial(settings.value(kLastSerial).toString());
    fillTcp(settings.value(kLastTcp).toString());
    const QString url = current.ToQString();
    if (url.startsWith(QStringLiteral("serial:"))) {
        serial->setChecked(true);
        fillSerial(url);
    } else if (url.startsWith(QStringLiteral("tcp:"))) {
        tcp->setChecked(true);
        fillTcp(url);
    } else {
        simulator->setChecked(true);
    }
    connect(m_kind, &QButtonGroup::idToggled, this, [this](int id, bool on) { if (on) EnableKind(id); });
    EnableKind(m_kind->checkedId());
}

void CConnectDlg::EnableKind(int kind) {
    m_port->setEnabled(kind == Serial);
    m_rate->setEnabled(kind == Serial);
    m_host->setEnabled(kind == Tcp);
    m_tcpPort->setEnabled(kind == Tcp);
}

void CConnectDlg::accept() {
    RememberLink(Url());
    QDialog::accept();
}

void CConnectDlg::RememberLink(const basekit::ustring& link) {
    QSettings settings;
    const QString url = link.ToQString();
    if (url.startsWith(QStringLiteral("serial:"))) {
        settings.setValue(kLastSerial, url);
        const QString path = SerialPath(url);
        QStringList used = settings.value(kUsedPaths).toStringList();
        used.removeAll(path);
        used.prepend(path);
        settings.setValue(kUsedPaths, used.mid(0, kMaxUsedPaths));
    } else if (url.startsWith(QStringLiteral("tcp:"))) {
        settings.setValue(kLastTcp, url);
    }
}

basekit::ustring CConnectDlg::Url() const {
    switch (m_kind->checkedId()) {
        case Serial:
            return basekit::ustring::FromQString(QStringLiteral("serial:%1?baud=%2").arg(m_port->currentText(), m_rate->currentText()));
        case Tcp:
            return basekit::ustring::FromQString(QStringLiteral("tcp://%1:%2").arg(m_host->text()).arg(m_tcpPort->value()));
        default:
            return L"sim:";
    }
}
