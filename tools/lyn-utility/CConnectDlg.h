#pragma once
#include <QDialog>

#include "platform/basekit/ustring.h"

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QSpinBox;

// Where to connect: the built-in simulated receiver (the default), a serial port at a rate, or
// a TCP host and port. Only the chosen kind's fields are enabled; the last link of each kind is
// remembered; the serial ports present on this machine, and the paths (pseudo-terminals) used
// before, are offered. Gives the link text the device layer opens.
class CConnectDlg : public QDialog {
public:
    explicit CConnectDlg(QWidget* parent, const basekit::ustring& current);
    basekit::ustring Url() const;
    void accept() override;

    // Serial devices with hardware behind them: USB and ACM adapters, and the built-in ports
    // whose kernel type is known.
    static QStringList PresentSerialPorts();
    // Keeps a link as the last of its kind (a serial path also among the paths used), so that
    // the dialog offers it next time: the chosen link, or the one the host followed the
    // receiver's port to.
    static void RememberLink(const basekit::ustring& url);

private:
    void EnableKind(int kind);

    QButtonGroup* m_kind;
    QComboBox* m_port;
    QComboBox* m_rate;
    QLineEdit* m_host;
    QSpinBox* m_tcpPort;
};
