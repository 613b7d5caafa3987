#pragma once
#include <QElapsedTimer>
#include <QTimer>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "platform/devio/CRawFileWriter.h"

// Real-time logging into a local file on the controller: start/stop, file name, bytes written,
// duration and free disk space. The file gets every byte the receiver's link carries, as it
// came (replies and messages alike), through a raw tap of the link; the writing happens on the
// writer's own thread. While it runs the sheet asks before it closes.
class CStatusRealTimeLoggingPP : public CFenkPropertyPage {
public:
    explicit CStatusRealTimeLoggingPP(basekit::CSmartPtr<devio::IReceiver> receiver);
    ~CStatusRealTimeLoggingPP() override;

    bool OnInitDialog() override;
    void UpdateControls() override;

    // Starts logging into path (appending to a file that exists); a file that cannot be opened,
    // or a link that cannot be tapped, is reported and nothing starts.
    bool StartLogging(const QString& path);
    // Everything received so far is in the file once this returns.
    void StopLogging();
    bool IsLoggingInProgress() const { return static_cast<bool>(m_writer); }
    // The log now running, or the last one once stopped.
    devio::RAW_LOG_STATE LogState() const;

protected:
    void OnDestroy() override;

private:
    void OnStartStop();
    void OnTick();
    void ShowState();

    CDialogControls m_controls;
    basekit::CSmartPtr<devio::CRawFileWriter> m_writer;
    QString m_path;
    devio::RAW_LOG_STATE m_last;   // of the log stopped last
    qint64 m_lastSeconds = 0;
    QElapsedTimer m_running;
    QTimer m_tick;
};
