#include "platform/hwctl/CV4l2Still.h"

#include <fcntl.h>
#include <linux/videodev2.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "platform/basekit/CStdException.h"
#include "platform/basekit/ustring.h"
#include "platform/hwctl/YuyvToRgb.h"

namespace hwctl {

namespace {

constexpr int kFrameWaitMs = 5000;   // a camera that delivers nothing for this long has failed
constexpr int kSettleFrames = 3;     // the first frames of many cameras are dark or half-exposed
constexpr unsigned kBuffers = 2;
constexpr unsigned kWidth = 1280, kHeight = 720;

[[noreturn]] void Fail(const std::string& device, const std::string& step) {
    throw basekit::CStdException(basekit::ustring::FromUtf8("the camera " + device + " failed to " + step + ": " + std::strerror(errno)),
                                 __FILE__, __LINE__);
}

int Ioctl(int fd, unsigned long request, void* arg) {
    int r = 0;
    do r = ioctl(fd, request, arg);
    while (r < 0 && errno == EINTR);
    return r;
}

// The device's descriptor, closed on every way out.
class CFd {
public:
    explicit CFd(int fd) : m_fd(fd) {}
    ~CFd() { if (m_fd >= 0) close(m_fd); }
    CFd(const CFd&) = delete;
    CFd& operator=(const CFd&) = delete;
    int Get() const { return m_fd; }

private:
    int m_fd;
};

void WaitForFrame(pollfd& ready, const std::string& device) {
    const int r = poll(&ready, 1, kFrameWaitMs);
    if (r > 0) return;
    if (r == 0) errno = ETIMEDOUT;
    Fail(device, "deliver a frame");
}

// Memory-mapped driver buffers, unmapped and the stream stopped on every way out.
class CMappedStream {
public:
    CMappedStream(int fd, const std::string& device) : m_fd(fd) {
        v4l2_requestbuffers request{};
        request.count = kBuffers;
        request.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        request.memory = V4L2_MEMORY_MMAP;
        if (Ioctl(fd, VIDIOC_REQBUFS, &request) < 0 || request.count == 0) Fail(device, "give capture buffers");
        for (unsigned i = 0; i < request.count; ++i) {
            v4l2_buffer buffer{};
            buffer.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
            buffer.memory = V4L2_MEMORY_MMAP;
            buffer.index = i;
            if (Ioctl(fd, VIDIOC_QUERYBUF, &buffer) < 0) Fail(device, "describe a capture buffer");
            void* at = mmap(nullptr, buffer.length, PROT_READ | PROT_WRITE, MAP_SHARED, fd, buffer.m.offset);
            if (at == MAP_FAILED) Fail(device, "map a capture buffer");
            m_maps.push_back({at, buffer.length});
            if (Ioctl(fd, VIDIOC_QBUF, &buffer) < 0) Fail(device, "queue a capture buffer");
        }
        int type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        if (Ioctl(fd, VIDIOC_STREAMON, &type) < 0) Fail(device, "start streaming");
        m_streaming = true;
    }
    ~CMappedStream() {
        int type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        if (m_streaming) Ioctl(m_fd, VIDIOC_STREAMOFF, &type);
        for (const auto& map : m_maps) munmap(map.at, map.length);
    }
    CMappedStream(const CMappedStream&) = delete;
    CMappedStream& operator=(const CMappedStream&) = delete;

    std::vector<std::uint8_t> Next(const std::string& device) {
        pollfd ready{m_fd, POLLIN, 0};
        WaitForFrame(ready, device);
        v4l2_buffer buffer{};
        buffer.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        buffer.memory = V4L2_MEMORY_MMAP;
        if (Ioctl(m_fd, VIDIOC_DQBUF, &buffer) < 0 || buffer.index >= m_maps.size()) Fail(device, "hand over a frame");
        const auto* at = static_cast<const std::uint8_t*>(m_maps[buffer.index].at);
        std::vector<std::uint8_t> bytes(at, at + std::min<std::size_t>(buffer.bytesused, m_maps[buffer.index].length));
        if (Ioctl(m_fd, VIDIOC_QBUF, &buffer) < 0) Fail(device, "queue a capture buffer");
        return bytes;
    }

private:
    struct MAP {
        void* at;
        std::size_t length;
    };
    int m_fd;
    std::vector<MAP> m_maps;
    bool m_streaming = false;
};

std::vector<std::uint8_t> ReadFrame(int fd, const std::string& device, std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    pollfd ready{fd, POLLIN, 0};
    WaitForFrame(ready, device);
    const ssize_t got = read(fd, bytes.data(), bytes.size());
    if (got <= 0) Fail(device, "deliver a frame");
    bytes.resize(static_cast<std::size_t>(got));
    return bytes;
}

// Asks for the format; the driver answers with what it grants.
bool Ask(int fd, unsigned pixelFormat, v4l2_format& granted) {
    granted = {};
    granted.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    granted.fmt.pix.width = kWidth;
    granted.fmt.pix.height = kHeight;
    granted.fmt.pix.pixelformat = pixelFormat;
    granted.fmt.pix.field = V4L2_FIELD_NONE;
    return Ioctl(fd, VIDIOC_S_FMT, &granted) == 0 && granted.fmt.pix.pixelformat == pixelFormat;
}

}  // namespace

std::vector<std::string> CV4l2Still::Devices(const std::string& devRoot) {
    std::vector<std::string> devices;
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(devRoot, ec))
        if (entry.path().filename().string().starts_with("video")) devices.push_back(entry.path().string());
    std::sort(devices.begin(), devices.end());
    return devices;
}

CV4l2Still::FRAME CV4l2Still::Grab(const std::string& device) {
    errno = 0;
    const CFd fd(open(device.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (fd.Get() < 0) Fail(device, "open");
    v4l2_capability caps{};
    if (Ioctl(fd.Get(), VIDIOC_QUERYCAP, &caps) < 0) Fail(device, "say what it is");
    const unsigned what = (caps.capabilities & V4L2_CAP_DEVICE_CAPS) ? caps.device_caps : caps.capabilities;
    if (!(what & V4L2_CAP_VIDEO_CAPTURE)) {
        errno = ENODEV;
        Fail(device, "capture video");
    }
    FRAME frame;
    v4l2_format format{};
    if (Ask(fd.Get(), V4L2_PIX_FMT_MJPEG, format)) frame.format = Format::Jpeg;
    else if (Ask(fd.Get(), V4L2_PIX_FMT_YUYV, format)) frame.format = Format::Yuyv;
    else {
        errno = EINVAL;
        Fail(device, "deliver MJPEG or YUYV");
    }
    frame.width = static_cast<int>(format.fmt.pix.width);
    frame.height = static_cast<int>(format.fmt.pix.height);
    frame.stride = static_cast<int>(format.fmt.pix.bytesperline ? format.fmt.pix.bytesperline : format.fmt.pix.width * 2);
    if (what & V4L2_CAP_STREAMING) {
        CMappedStream stream(fd.Get(), device);
        for (int i = 0; i < kSettleFrames; ++i) frame.bytes = stream.Next(device);
    } else if (what & V4L2_CAP_READWRITE) {
        for (int i = 0; i < kSettleFrames; ++i) frame.bytes = ReadFrame(fd.Get(), device, format.fmt.pix.sizeimage);
    } else {
        errno = ENOTSUP;
        Fail(device, "hand over frames");
    }
    return frame;
}

std::string CV4l2Still::Write(const FRAME& frame, const std::string& path) {
    std::string bytes;
    std::filesystem::path file(path);
    if (frame.format == Format::Jpeg) {
        file.replace_extension(".jpg");
        bytes.assign(frame.bytes.begin(), frame.bytes.end());
    } else {
        file.replace_extension(".ppm");
        const auto rgb = YuyvToRgb(frame.bytes, frame.width, frame.height, frame.stride);
        if (rgb.empty())
            throw basekit::CStdException(basekit::ustring::FromUtf8("the camera's frame is incomplete"), __FILE__, __LINE__);
        bytes = RgbToPpm(rgb, frame.width, frame.height);
    }
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out)
        throw basekit::CStdException(basekit::ustring::FromUtf8("the image cannot be written to " + file.string()), __FILE__, __LINE__);
    return file.string();
}

}  // namespace hwctl
