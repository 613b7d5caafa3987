// fwimage: builds a firmware image from a payload and describes one (docs/firmware-image.md).
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/devio/firmware/CFirmwareImageFile.h"

namespace {

int Usage() {
    std::fputs("usage: fwimage build --model MODEL --version VERSION PAYLOAD OUT.img\n"
               "       fwimage info IMAGE.img\n"
               "build  wraps a payload in an image header (model, version, length, CRC-32s)\n"
               "info   checks an image and prints its header as key=value lines\n",
               stderr);
    return 2;
}

int Fail(const std::string& text) {
    std::fprintf(stderr, "fwimage: %s\n", text.c_str());
    return 1;
}

int Build(int argc, char** argv) {
    std::string model, version, payloadPath, outPath;
    for (int i = 2; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if ((arg == "--model" || arg == "--version") && i + 1 < argc) (arg == "--model" ? model : version) = argv[++i];
        else if (payloadPath.empty()) payloadPath = argv[i];
        else if (outPath.empty()) outPath = argv[i];
        else return Usage();
    }
    if (model.empty() || version.empty() || outPath.empty()) return Usage();
    std::ifstream in(payloadPath, std::ios::binary);
    if (!in) return Fail("cannot read " + payloadPath);
    const std::string payload((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::string image;
    try {
        image = devio::firmware::BuildImage(model, version, payload);
    } catch (const std::invalid_argument& e) {
        return Fail(e.what());
    }
    std::ofstream out(outPath, std::ios::binary | std::ios::trunc);
    out.write(image.data(), static_cast<std::streamsize>(image.size()));
    out.close();
    if (!out) return Fail("cannot write " + outPath);
    return 0;
}

int Info(const char* path) {
    try {
        const devio::FIRMWARE_IMAGE image = devio::ReadFirmwareImage(path);
        std::printf("model=%s\nversion=%s\npayload=%u\ncrc32=0x%08x\n", image.info.model.c_str(), image.info.version.c_str(),
                    image.info.payloadLength, image.info.payloadCrc);
        return 0;
    } catch (const devio::CFirmwareImageException& e) {
        return Fail(e.Text().ToUtf8());
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc >= 2 && std::string_view(argv[1]) == "build") return Build(argc, argv);
    if (argc == 3 && std::string_view(argv[1]) == "info") return Info(argv[2]);
    return Usage();
}
