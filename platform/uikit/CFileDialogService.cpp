#include "platform/uikit/CFileDialogService.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <utility>

#include "platform/uikit/CScreenFit.h"

namespace uikit {

namespace {

// File dialogs live on the GUI thread only, so the slot needs no lock.
FileDialogResponder& ResponderSlot() {
    static FileDialogResponder responder;
    return responder;
}

QString QtPatterns(const QString& classic) {
    QStringList patterns;
    for (const QString& p : classic.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QString trimmed = p.trimmed();
        patterns << (trimmed == QLatin1String("*.*") ? QStringLiteral("*") : trimmed);
    }
    return patterns.join(QLatin1Char(' '));
}

// The description's own "(*.txt)" is only decoration; Qt reads the patterns from the last
// parenthesis, so it is replaced by the real ones.
QString Description(const QString& text) {
    static const QRegularExpression trailingPatterns(QStringLiteral("\\s*\\([^()]*\\)\\s*$"));
    return QString(text).remove(trailingPatterns).trimmed();
}

QString ShowDialog(const FileDialogRequest& request) {
    QFileDialog dialog(request.owner);
    const bool save = request.kind == FileDialogRequest::Kind::Save;
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    const QStringList filters = CFileDialogService::ConvertFilter(request.filter);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    QString suffix = request.defaultExtension.ToQString();
    if (suffix.startsWith(QLatin1Char('.'))) suffix.remove(0, 1);
    dialog.setDefaultSuffix(suffix);
    const QFileInfo start(request.defaultPath.ToQString());
    if (!request.defaultPath.empty()) {
        if (start.isDir()) dialog.setDirectory(start.absoluteFilePath());
        else {
            if (!start.path().isEmpty()) dialog.setDirectory(start.absolutePath());
            dialog.selectFile(start.fileName());
        }
    }
    // On a small screen the desktop's own dialog (sidebar, detail columns) does not fit: the
    // compact form is a plain list that fills the available area.
    if (CScreenFit::IsSmall(CScreenFit::AvailableFor(dialog))) {
        dialog.setOption(QFileDialog::DontUseNativeDialog, true);
        dialog.setViewMode(QFileDialog::List);
        dialog.setOption(QFileDialog::DontUseCustomDirectoryIcons, true);
        if (QWidget* sidebar = dialog.findChild<QWidget*>(QStringLiteral("sidebar"))) sidebar->hide();
        dialog.resize(CScreenFit::AvailableFor(dialog).size());
    }
    CScreenFit::Apply(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().constFirst();
}

basekit::ustring Run(FileDialogRequest request) {
    const basekit::ustring chosen = ResponderSlot() ? ResponderSlot()(request)
                                                    : basekit::ustring::FromQString(ShowDialog(request));
    return CFileDialogService::WithDefaultExtension(chosen, request.defaultExtension);
}

}  // namespace

FileDialogResponder CFileDialogService::SetResponder(FileDialogResponder responder) {
    return std::exchange(ResponderSlot(), std::move(responder));
}

basekit::ustring CFileDialogService::GetSaveFileName(QWidget* owner, const basekit::ustring& defaultPath,
                                                     const basekit::ustring& filter,
                                                     const basekit::ustring& defaultExtension) {
    return Run({FileDialogRequest::Kind::Save, owner, defaultPath, filter, defaultExtension});
}

basekit::ustring CFileDialogService::GetOpenFileName(QWidget* owner, const basekit::ustring& defaultPath,
                                                     const basekit::ustring& filter,
                                                     const basekit::ustring& defaultExtension) {
    return Run({FileDialogRequest::Kind::Open, owner, defaultPath, filter, defaultExtension});
}

QStringList CFileDialogService::ConvertFilter(const basekit::ustring& classic) {
    const QStringList parts = classic.ToQString().split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].isEmpty() && parts[i + 1].isEmpty()) break;   // the closing "||"
        const QString patterns = QtPatterns(parts[i + 1]);
        if (patterns.isEmpty()) continue;
        filters << QStringLiteral("%1 (%2)").arg(Description(parts[i]), patterns);
    }
    return filters;
}

basekit::ustring CFileDialogService::WithDefaultExtension(const basekit::ustring& path,
                                                          const basekit::ustring& defaultExtension) {
    if (path.empty() || defaultExtension.empty()) return path;
    if (!QFileInfo(path.ToQString()).suffix().isEmpty()) return path;
    basekit::ustring out = path;
    if (defaultExtension.front() != L'.') out += L'.';
    out += defaultExtension;
    return out;
}

}  // namespace uikit
