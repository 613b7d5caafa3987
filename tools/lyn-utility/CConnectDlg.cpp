#include "tools/lyn-utility/CConnectDlg.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "tools/lyn-utility/HostStrings.h"

namespace {
enum Kind { Simulator, Serial, Tcp };
constexpr int kRates[] = {300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 153600, 230400, 460800, 921600};

QStringList SerialPorts() {
    QStringList ports;
    const QDir dev(QStringLiteral("/dev"));
    for (const QString& name : dev.entryList({QStringLiteral("ttyS*"), QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*")}, QDir::System))
        ports << dev.filePath(name);
    return ports;
}
}  // namespace

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
    m_port->addItems(SerialPorts());
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

    const QString url = current.ToQString();
    if (url.startsWith(QStringLiteral("serial:"))) serial->setChecked(true);
    else if (url.startsWith(QStringLiteral("tcp:"))) tcp->setChecked(true);
    else simulator->setChecked(true);
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
