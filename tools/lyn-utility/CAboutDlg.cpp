#include "tools/lyn-utility/CAboutDlg.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QLibrary>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <dlfcn.h>

#include "tools/lyn-utility/CFenkBinding.h"
#include "tools/lyn-utility/HostStrings.h"

using basekit::ustring;

extern const char* const kLicenceText;   // the repository's LICENSE, compiled in

namespace {

// The library's text providers are static members of CFenkLibDoc, bound by their exported names.
using TextProvider = ustring (*)(bool translated);
constexpr const char* kLongNameSymbol = "_ZN11CFenkLibDoc22GetLongApplicationNameEb";
constexpr const char* kVersionSymbol = "_ZN11CFenkLibDoc21GetApplicationVersionEb";

// The file the system actually loaded: the binding may have named it by its soname only.
QString LoadedFile(QFunctionPointer symbol, const QString& fallback) {
    Dl_info info{};
    if (symbol && dladdr(reinterpret_cast<void*>(symbol), &info) && info.dli_fname) return QString::fromLocal8Bit(info.dli_fname);
    return fallback;
}

// The version in the real file's name (libfenk.so.2.3.0); the link names carry less of it.
QString VersionOfFile(const QString& path) {
    const QString real = QFileInfo(path).canonicalFilePath();
    const qsizetype at = real.lastIndexOf(QLatin1String(".so."));
    return at < 0 ? QString() : real.mid(at + 4);
}

}  // namespace

ABOUT_TEXTS AboutTexts(const CFenkBinding& library) {
    // A second handle on the loaded library: the system shares the one image between them.
    QLibrary image(library.FileName());
    ABOUT_TEXTS texts;
    const auto name = image.load() ? reinterpret_cast<TextProvider>(image.resolve(kLongNameSymbol)) : nullptr;
    const auto version = image.isLoaded() ? reinterpret_cast<TextProvider>(image.resolve(kVersionSymbol)) : nullptr;
    texts.name = name ? name(true) : HostText(HS_TITLE);
    if (version) texts.version = version(true);
    texts.libraryPath = LoadedFile(reinterpret_cast<QFunctionPointer>(name), library.FileName());
    texts.libraryVersion = VersionOfFile(texts.libraryPath);
    texts.qtVersion = QString::fromLatin1(qVersion());
    texts.licence = QString::fromUtf8(kLicenceText);
    return texts;
}

CAboutDlg::CAboutDlg(QWidget* parent, const ABOUT_TEXTS& texts) : QDialog(parent) {
    setWindowTitle(ustring::Format(HostText(HS_ABOUT_TITLE).c_str(), texts.name).ToQString());
    auto* layout = new QVBoxLayout(this);
    auto* name = new QLabel(texts.name.ToQString(), this);
    QFont big = name->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.5);
    name->setFont(big);
    layout->addWidget(name);
    layout->addWidget(new QLabel(texts.version.ToQString(), this));
    const ustring libraryLine = ustring::Format(HostText(HS_ABOUT_LIBRARY).c_str(), ustring::FromQString(texts.libraryPath),
                                                ustring::FromQString(texts.libraryVersion));
    auto* libraryLabel = new QLabel(libraryLine.ToQString(), this);
    libraryLabel->setWordWrap(true);
    libraryLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(libraryLabel);
    layout->addWidget(new QLabel(ustring::Format(HostText(HS_ABOUT_QT).c_str(), ustring::FromQString(texts.qtVersion)).ToQString(), this));
    layout->addWidget(new QLabel(HostText(HS_ABOUT_LICENCE).ToQString(), this));
    auto* licence = new QPlainTextEdit(texts.licence, this);
    licence->setReadOnly(true);
    layout->addWidget(licence, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
}
