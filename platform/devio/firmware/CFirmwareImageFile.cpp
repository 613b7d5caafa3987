#include "platform/devio/firmware/CFirmwareImageFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <fstream>
#include <iterator>

#include "platform/devio/ymodem/TransferStrings.h"

namespace devio {

using basekit::ustring;
using firmware::EImageFault;

namespace {

ustring Text(unsigned id) { return TransferText(id); }

[[noreturn]] void Refuse(int line, EImageFault fault, const ustring& name, const firmware::FIRMWARE_IMAGE_CHECK& check,
                         std::uint64_t size) {
    const auto n = static_cast<unsigned long long>(size);
    const auto expected = static_cast<unsigned long long>(check.expectedSize);
    ustring text;
    switch (fault) {
        case EImageFault::Empty: text = ustring::Format(Text(kStrImgEmpty).c_str(), name); break;
        case EImageFault::TooLarge:
            text = ustring::Format(Text(kStrImgTooLarge).c_str(), name, std::max(n, expected),
                                   static_cast<unsigned long long>(firmware::kHeaderSize + firmware::kMaxPayload));
            break;
        case EImageFault::NotAnImage: text = ustring::Format(Text(kStrImgNotAnImage).c_str(), name); break;
        case EImageFault::UnknownFormat: text = ustring::Format(Text(kStrImgUnknownFormat).c_str(), name); break;
        case EImageFault::TruncatedHeader: text = ustring::Format(Text(kStrImgTruncatedHeader).c_str(), name, n); break;
        case EImageFault::BadHeader: text = ustring::Format(Text(kStrImgBadHeader).c_str(), name); break;
        case EImageFault::Truncated: text = ustring::Format(Text(kStrImgTruncated).c_str(), name, n, expected); break;
        case EImageFault::TrailingBytes: text = ustring::Format(Text(kStrImgTrailingBytes).c_str(), name, n, expected); break;
        case EImageFault::BadPayload: text = ustring::Format(Text(kStrImgBadPayload).c_str(), name); break;
        case EImageFault::None: break;
    }
    throw CFirmwareImageException(line, fault, text, basekit::kErrorInvalidData);
}

}  // namespace

CFirmwareImageException::CFirmwareImageException(int line, EImageFault fault, ustring text, unsigned code)
    : CWinException("FirmwareImage", line, std::move(text), code), m_fault(fault) {}

FIRMWARE_IMAGE CheckFirmwareImage(std::string bytes, const ustring& name) {
    const firmware::FIRMWARE_IMAGE_CHECK check = firmware::CheckImage(bytes);
    if (!check.Ok()) Refuse(__LINE__, check.fault, name, check, bytes.size());
    return FIRMWARE_IMAGE{check.info, std::move(bytes)};
}

FIRMWARE_IMAGE ReadFirmwareImage(const std::string& path) {
    const ustring name = ustring::FromUtf8(path);
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) {
        const unsigned code = errno == ENOENT ? basekit::kErrorFileNotFound : basekit::SystemErrorFromErrno(errno ? errno : EINVAL);
        throw CFirmwareImageException(__LINE__, EImageFault::None, ustring::Format(Text(kStrImgUnreadable).c_str(), name), code);
    }
    const auto size = static_cast<std::uint64_t>(st.st_size);
    if (const EImageFault fault = firmware::CheckImageSize(size); fault != EImageFault::None)
        Refuse(__LINE__, fault, name, {}, size);
    std::ifstream in(path, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (!in.good() && !in.eof())
        throw CFirmwareImageException(__LINE__, EImageFault::None, ustring::Format(Text(kStrImgUnreadable).c_str(), name),
                                      basekit::kErrorIoDevice);
    return CheckFirmwareImage(std::move(bytes), name);
}

}  // namespace devio
