#include "platform/uikit/CMessageBoxService.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/uikit/CMessageBoxResponder.h"
#include "platform/uikit/CScreenFit.h"

namespace uikit {

namespace {

std::mutex& ResponderMutex() {
    static std::mutex m;
    return m;
}

MessageBoxResponder& ResponderSlot() {
    static MessageBoxResponder responder;
    return responder;
}

MessageBoxResponder CurrentResponder() {
    const std::lock_guard lock(ResponderMutex());
    return ResponderSlot();
}

struct ButtonAnswer {
    QMessageBox::StandardButton button;
    int answer;
};

// The buttons of each box type, left to right, so MB_DEFBUTTONn picks the n-th.
std::vector<ButtonAnswer> ButtonsOf(unsigned flags) {
    switch (flags & MB_TYPEMASK) {
        case MB_OKCANCEL: return {{QMessageBox::Ok, IDOK}, {QMessageBox::Cancel, IDCANCEL}};
        case MB_ABORTRETRYIGNORE:
            return {{QMessageBox::Abort, IDABORT}, {QMessageBox::Retry, IDRETRY}, {QMessageBox::Ignore, IDIGNORE}};
        case MB_YESNOCANCEL:
            return {{QMessageBox::Yes, IDYES}, {QMessageBox::No, IDNO}, {QMessageBox::Cancel, IDCANCEL}};
        case MB_YESNO: return {{QMessageBox::Yes, IDYES}, {QMessageBox::No, IDNO}};
        case MB_RETRYCANCEL: return {{QMessageBox::Retry, IDRETRY}, {QMessageBox::Cancel, IDCANCEL}};
        default: return {{QMessageBox::Ok, IDOK}};
    }
}

QMessageBox::Icon IconOf(unsigned flags) {
    switch (flags & MB_ICONMASK) {
        case MB_ICONERROR: return QMessageBox::Critical;
        case MB_ICONQUESTION: return QMessageBox::Question;
        case MB_ICONWARNING: return QMessageBox::Warning;
        case MB_ICONINFORMATION: return QMessageBox::Information;
        default: return QMessageBox::NoIcon;
    }
}

QString CaptionOr(const basekit::ustring& caption) {
    return caption.empty() ? QGuiApplication::applicationDisplayName() : caption.ToQString();
}

int ShowBox(const MessageBoxRequest& request) {
    QMessageBox box(IconOf(request.flags), CaptionOr(request.caption), request.text.ToQString(),
                    QMessageBox::NoButton, request.owner);
    const auto buttons = ButtonsOf(request.flags);
    for (const auto& b : buttons) box.addButton(b.button);
    if (!request.details.empty()) box.setDetailedText(request.details.ToQString());
    const std::size_t defaultIndex = (request.flags & MB_DEFMASK) >> 8;
    if (defaultIndex < buttons.size()) box.setDefaultButton(buttons[defaultIndex].button);
    // The box sizes itself to the screen's width but is centred on its owner, which may sit at the
    // screen's edge: once shown it is moved inside the available area.
    QTimer::singleShot(0, &box, [&box] {
        box.move(CScreenFit::Fit(box.frameGeometry(), CScreenFit::AvailableFor(box)).topLeft());
    });
    box.exec();
    const auto pressed = box.standardButton(box.clickedButton());
    for (const auto& b : buttons)
        if (b.button == pressed) return b.answer;
    // Closed without a button (Escape, window frame): the box's negative answer.
    return CMessageBoxResponder::NegativeAnswer(request.flags);
}

bool OnGuiThread() {
    const QCoreApplication* app = QCoreApplication::instance();
    return app && QThread::currentThread() == app->thread() && qobject_cast<const QApplication*>(app);
}

}  // namespace

MessageBoxResponder CMessageBoxService::SetResponder(MessageBoxResponder responder) {
    const std::lock_guard lock(ResponderMutex());
    return std::exchange(ResponderSlot(), std::move(responder));
}

int CMessageBoxService::Show(QWidget* owner, const basekit::ustring& text,
                             const basekit::ustring& caption, unsigned flags) {
    return Show(MessageBoxRequest{owner, text, caption, flags, {}});
}

int CMessageBoxService::Show(const MessageBoxRequest& request) {
    const basekit::ustring& text = request.text;
    const unsigned flags = request.flags;
    if (const auto responder = CurrentResponder()) return responder(request);
    if (!OnGuiThread()) {
        // A box can only live on the GUI thread; a worker asking for one gets the answer that
        // changes nothing rather than a crash.
        qWarning("uikit: message box requested outside the GUI thread: %s", text.ToUtf8().c_str());
        return CMessageBoxResponder::NegativeAnswer(flags);
    }
    return ShowBox(request);
}

void CMessageBoxService::ReportError(QWidget* owner, const basekit::CStdException& e) {
    const basekit::ustring plain = e.GetPlainMessage();
    if (plain.empty()) Show(owner, e.GetMessage(), {}, MB_OK | MB_ICONERROR);
    else ShowError(owner, plain, e.GetMessage());
}

void CMessageBoxService::ReportCurrentError(QWidget* owner) {
    try {
        std::rethrow_exception(basekit::CurrentAsStdException());
    } catch (const basekit::CStdException& e) {
        ReportError(owner, e);
    }
}

void CMessageBoxService::ShowError(QWidget* owner, const basekit::ustring& plain, const basekit::ustring& details,
                                   const basekit::ustring& caption) {
    Show(MessageBoxRequest{owner, plain, caption, MB_OK | MB_ICONERROR, details});
}

}  // namespace uikit
