#pragma once
#include <QDialog>

#include "platform/basekit/ustring.h"

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QSpinBox;

// Where to connect: the built-in simulated receiver (the default), a serial port at a rate, or
// a TCP host and port. Gives the link text the device layer opens.
class CConnectDlg : public QDialog {
public:
    explicit CConnectDlg(QWidget* parent, const basekit::ustring& current);
    basekit::ustring Url() const;

private:
    QButtonGroup* m_kind;
    QComboBox* m_port;
    QComboBox* m_rate;
    QLineEdit* m_host;
    QSpinBox* m_tcpPort;
};
