// The firmware image container: what the reader refuses and why, and a file too large to read.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "platform/devio/firmware/CFirmwareImageFile.h"
#include "platform/devio/firmware/FirmwareImage.h"

namespace {

using namespace devio;
using namespace devio::firmware;

std::string Payload(std::size_t n) {
    std::mt19937 rng(11);
    std::string s(n, '\0');
    for (auto& c : s) c = static_cast<char>(rng() & 0xff);
    return s;
}

TEST(FirmwareImage, CrcOfTheCheckString) { EXPECT_EQ(Crc32("123456789"), 0xCBF43926u); }

TEST(FirmwareImage, BuiltImagesReadBack) {
    const std::string image = BuildImage("FNK-600", "4.3.0 Nov,02,2026", Payload(5000));
    const auto check = CheckImage(image);
    ASSERT_TRUE(check.Ok());
    EXPECT_EQ(check.info.model, "FNK-600");
    EXPECT_EQ(check.info.version, "4.3.0 Nov,02,2026");
    EXPECT_EQ(check.info.payloadLength, 5000u);
    EXPECT_EQ(ImagePayload(image), Payload(5000));
}

TEST(FirmwareImage, RefusesWhatIsNoSoundImage) {
    const std::string good = BuildImage("FNK-600", "4.3.0", Payload(3000));
    const auto changed = [&](std::size_t at) {
        std::string s = good;
        s[at] = static_cast<char>(s[at] ^ 0x01);
        return s;
    };
    std::string laterFormat = good;
    laterFormat[8] = 2;
    struct Row {
        const char* legend;
        std::string bytes;
        EImageFault fault;
    };
    const Row rows[] = {
        {"an empty file", "", EImageFault::Empty},
        {"random bytes", Payload(4096), EImageFault::NotAnImage},
        {"a text file", "#!/bin/sh\necho hello\n", EImageFault::NotAnImage},
        {"cut inside the magic", good.substr(0, 5), EImageFault::TruncatedHeader},
        {"cut inside the header", good.substr(0, 40), EImageFault::TruncatedHeader},
        {"a later format", laterFormat, EImageFault::UnknownFormat},
        {"a changed model byte breaks the header's CRC", changed(21), EImageFault::BadHeader},
        {"a changed length breaks the header's CRC", changed(12), EImageFault::BadHeader},
        {"cut inside the payload", good.substr(0, good.size() - 1), EImageFault::Truncated},
        {"bytes after the payload", good + "x", EImageFault::TrailingBytes},
        {"a changed payload byte", changed(kHeaderSize + 1234), EImageFault::BadPayload},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.legend);
        EXPECT_EQ(CheckImage(row.bytes).fault, row.fault);
        try {
            CheckFirmwareImage(row.bytes, L"x.img");
            ADD_FAILURE() << "accepted";
        } catch (const CFirmwareImageException& e) {
            EXPECT_EQ(e.Fault(), row.fault);
            EXPECT_NE(e.GetMessage().find(L"\"x.img\""), std::wstring::npos) << e.what();
        }
    }
}

TEST(FirmwareImage, BuildRefusesFieldsThatDoNotFit) {
    EXPECT_THROW(BuildImage("", "1", "p"), std::invalid_argument);
    EXPECT_THROW(BuildImage("M", "", "p"), std::invalid_argument);
    EXPECT_THROW(BuildImage("A-model-name-too-long", "1", "p"), std::invalid_argument);
    EXPECT_THROW(BuildImage("M\n", "1", "p"), std::invalid_argument);
}

TEST(FirmwareImage, FileLargerThanAnyImageIsRefusedUnread) {
    const auto dir = std::filesystem::temp_directory_path() / ("fenk-fwimage-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    const auto big = dir / "big.img";
    {
        std::ofstream out(big, std::ios::binary);
        out.write(BuildImage("FNK-600", "1", "x").data(), 65);
    }
    // A sparse 200 MB file: the size alone refuses it.
    std::filesystem::resize_file(big, 200ull << 20);
    try {
        ReadFirmwareImage(big.string());
        ADD_FAILURE() << "accepted";
    } catch (const CFirmwareImageException& e) {
        EXPECT_EQ(e.Fault(), EImageFault::TooLarge);
        EXPECT_NE(e.GetMessage().find(L"209715200"), std::wstring::npos) << e.what();
    }
    try {
        ReadFirmwareImage((dir / "missing.img").string());
        ADD_FAILURE() << "accepted";
    } catch (const CFirmwareImageException& e) {
        EXPECT_EQ(e.Code(), basekit::kErrorFileNotFound);
    }
    std::filesystem::remove_all(dir);
}

}  // namespace
