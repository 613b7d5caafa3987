#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace hwctl {

// One still from a Linux video capture device (V4L2): the device is asked for MJPEG, else
// YUYV, at the largest usual size it grants; one frame is read (read() when the driver offers
// it, else through memory-mapped buffers) after the camera has settled. Failures are
// basekit::CStdException naming the device and the step.
class CV4l2Still {
public:
    enum class Format { Jpeg, Yuyv };
    struct FRAME {
        Format format = Format::Jpeg;
        int width = 0, height = 0, stride = 0;
        std::vector<std::uint8_t> bytes;
    };

    // The capture devices under devRoot ("/dev/video0" ...), in name order.
    static std::vector<std::string> Devices(const std::string& devRoot);
    static FRAME Grab(const std::string& device);
    // The frame as a file: a JPEG as it came, YUYV as a PPM. path's extension is replaced by
    // the one of the form written; returns the file written.
    static std::string Write(const FRAME& frame, const std::string& path);
};

}  // namespace hwctl
