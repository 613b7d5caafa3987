#pragma once
#include <string>
#include <string_view>

#include "platform/basekit/CWinException.h"
#include "platform/devio/firmware/FirmwareImage.h"

namespace devio {

// A firmware image read and checked whole.
struct FIRMWARE_IMAGE {
    firmware::FIRMWARE_IMAGE_INFO info;
    std::string bytes;   // header and payload, as the file holds them
};

// Why a file is no usable image; the text names the file and says what is wrong with it.
class CFirmwareImageException : public basekit::CWinException {
public:
    CFirmwareImageException(int line, firmware::EImageFault fault, basekit::ustring text, unsigned code);
    firmware::EImageFault Fault() const { return m_fault; }

private:
    firmware::EImageFault m_fault;
};

// Reads an image file and checks it; a file larger than any image is refused by its size,
// before it is read. Throws CFirmwareImageException.
FIRMWARE_IMAGE ReadFirmwareImage(const std::string& path);
// The same check on bytes in memory; `name` is what the texts call them.
FIRMWARE_IMAGE CheckFirmwareImage(std::string bytes, const basekit::ustring& name);

}  // namespace devio
