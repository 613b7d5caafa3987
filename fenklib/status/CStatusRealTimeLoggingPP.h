#pragma once
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <memory>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"

// Real-time logging into a local file on the controller: start/stop, file name, bytes written,
// duration and free disk space. While it runs the sheet asks before it closes.
class CStatusRealTimeLoggingPP : public CFenkPropertyPage {
public:
    explicit CStatusRealTimeLoggingPP(basekit::CSmartPtr<devio::IReceiver> receiver);
    ~CStatusRealTimeLoggingPP() override;

    bool OnInitDialog() override;
    void UpdateControls() override;

    // Starts logging into path; a file that cannot be opened is reported and nothing starts.
    bool StartLogging(const QString& path);
    void StopLogging();
    bool IsLoggingInProgress() const { return m_file != nullptr; }
    // Appends what the receiver output to the open log.
    void Write(const QByteArray& bytes);
    qint64 BytesWritten() const { return m_bytes; }

protected:
    void OnDestroy() override;

private:
    void OnStartStop();
    void ShowState();

    CDialogControls m_controls;
    std::unique_ptr<QFile> m_file;
    qint64 m_bytes = 0;
    QElapsedTimer m_running;
    QTimer m_tick;
};
