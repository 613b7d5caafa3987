#pragma once
#include <memory>
#include <string>

namespace hwctl {

// Where the controller's hardware facts come from: its model, the power switches of its
// internal receiver and modem, and its laser distance meter, camera and compass.
// Failures are basekit::CStdException with a text fit for an error box.
class IControllerBackend {
public:
    virtual ~IControllerBackend() = default;
    virtual std::string ModelName() const = 0;            // empty: not a controller of the family
    virtual std::string ReceiverPort() const = 0;         // device path of the internal receiver's port
    virtual std::string ModemPort() const = 0;
    virtual bool GetPower(const std::string& device) const = 0;   // device: "receiver" or "modem"
    virtual void SetPower(const std::string& device, bool on) = 0;

    // device: "laser", "camera" or "compass"; an absent one is not an error, just absent.
    virtual bool HasDevice(const std::string& device) const = 0;
    virtual double ReadDistance() = 0;                             // metres
    // Writes one still image to path, or beside it under the extension of the form the camera
    // delivers (".jpg" for JPEG, ".ppm" for an uncompressed frame); returns the file written.
    virtual std::string CaptureStill(const std::string& path) = 0;
    virtual double ReadHeading() = 0;                              // degrees from north, 0..360
    // The correction the compass adds to every raw heading, in degrees; storing replaces it.
    virtual double HeadingCorrection() const = 0;
    virtual void StoreHeadingCorrection(double degrees) = 0;
};

// The backend chosen at run time: FENK_HWCTL_ROOT names a folder for the file backend;
// otherwise the controller is not one of the family and its laser and compass are the
// kernel's IIO devices, if it has any.
std::unique_ptr<IControllerBackend> CreateBackend();
// Tests and hosts may name the folder themselves; an empty path goes back to the environment.
void SetBackendRoot(const std::string& root);

}  // namespace hwctl
