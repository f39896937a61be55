#include "Hosts/SDL/SDLSensors.h"

#include <cstdint>
#include <utility>

namespace zanto {

namespace {

/// A subsystem of SDL that is initialised while this object exists. SDL counts its users.
class Subsystem {
public:
    explicit Subsystem(Uint32 flag) : flag_(flag), isThere_(SDL_InitSubSystem(flag) == 0) {}
    ~Subsystem() {
        if (isThere_)
            SDL_QuitSubSystem(flag_);
    }
    Subsystem(const Subsystem&) = delete;
    Subsystem& operator=(const Subsystem&) = delete;
    [[nodiscard]] bool isThere() const { return isThere_; }

private:
    Uint32 flag_;
    bool isThere_;
};

SensorSample sampleOfValues(SDL_SensorType type, const float* values, std::uint64_t microseconds,
                            std::uint32_t milliseconds) {
    // Some sensors have no clock of their own.
    const double seconds = microseconds != 0 ? static_cast<double>(microseconds) / 1e6
                                             : static_cast<double>(milliseconds) / 1e3;
    return {type,
            {static_cast<double>(values[0]), static_cast<double>(values[1]),
             static_cast<double>(values[2])},
            seconds};
}

/// The index of the first sensor of a type, or -1 if there is none.
int indexOf(SDL_SensorType type) {
    for (int i = 0; i < SDL_NumSensors(); ++i) {
        if (SDL_SensorGetDeviceType(i) == type)
            return i;
    }
    return -1;
}

bool machineHasBoth() {
    return indexOf(SDL_SENSOR_GYRO) >= 0 && indexOf(SDL_SENSOR_ACCEL) >= 0;
}

/// Whether a controller of this type may have sensors. SDL knows for certain only after it is
/// opened.
bool isOfAKindWithSensors(int index) {
    if (SDL_IsGameController(index) == SDL_FALSE)
        return false;
    switch (SDL_GameControllerTypeForIndex(index)) {
    case SDL_CONTROLLER_TYPE_PS4:
    case SDL_CONTROLLER_TYPE_PS5:
    case SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_PRO:
    case SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_JOYCON_LEFT:
    case SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_JOYCON_RIGHT:
    case SDL_CONTROLLER_TYPE_NINTENDO_SWITCH_JOYCON_PAIR:
        return true;
    default:
        return false;
    }
}

class MachineSensors final : public SDLSensors {
public:
    [[nodiscard]] bool open() {
        if (!subsystem_.isThere() || !machineHasBoth())
            return false;
        gyroscope_ = SDL_SensorOpen(indexOf(SDL_SENSOR_GYRO));
        accelerometer_ = SDL_SensorOpen(indexOf(SDL_SENSOR_ACCEL));
        return gyroscope_ != nullptr && accelerometer_ != nullptr;
    }
    ~MachineSensors() override {
        for (SDL_Sensor* sensor : {gyroscope_, accelerometer_}) {
            if (sensor)
                SDL_SensorClose(sensor);
        }
    }
    [[nodiscard]] std::optional<SensorSample> sampleOf(const SDL_Event& event) const override {
        if (event.type != SDL_SENSORUPDATE)
            return std::nullopt;
        for (SDL_Sensor* sensor : {gyroscope_, accelerometer_}) {
            if (SDL_SensorGetInstanceID(sensor) == event.sensor.which)
                return sampleOfValues(SDL_SensorGetType(sensor), event.sensor.data, timeOf(event),
                                      event.sensor.timestamp);
        }
        return std::nullopt;
    }
    [[nodiscard]] bool areInController() const override { return false; }

private:
    static std::uint64_t timeOf(const SDL_Event& event) {
#if SDL_VERSION_ATLEAST(2, 26, 0)
        return event.sensor.timestamp_us;
#else
        (void)event;
        return 0;
#endif
    }

    Subsystem subsystem_{SDL_INIT_SENSOR}; // destroyed last
    SDL_Sensor* gyroscope_ = nullptr;
    SDL_Sensor* accelerometer_ = nullptr;
};

class ControllerSensors final : public SDLSensors {
public:
    [[nodiscard]] bool open() {
        const int count = subsystem_.isThere() ? SDL_NumJoysticks() : 0;
        for (int i = 0; i < count; ++i) {
            if (isOfAKindWithSensors(i) && open(i))
                return true;
        }
        return false;
    }
    ~ControllerSensors() override { close(); }
    [[nodiscard]] std::optional<SensorSample> sampleOf(const SDL_Event& event) const override {
        if (event.type != SDL_CONTROLLERSENSORUPDATE ||
            event.csensor.which !=
                SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(controller_)))
            return std::nullopt;
        return sampleOfValues(static_cast<SDL_SensorType>(event.csensor.sensor), event.csensor.data,
                              timeOf(event), event.csensor.timestamp);
    }
    [[nodiscard]] bool areInController() const override { return true; }

private:
    static std::uint64_t timeOf(const SDL_Event& event) {
#if SDL_VERSION_ATLEAST(2, 26, 0)
        return event.csensor.timestamp_us;
#else
        (void)event;
        return 0;
#endif
    }

    [[nodiscard]] bool open(int index) {
        controller_ = SDL_GameControllerOpen(index);
        if (controller_ && enable(SDL_SENSOR_GYRO) && enable(SDL_SENSOR_ACCEL))
            return true;
        close();
        return false;
    }
    [[nodiscard]] bool enable(SDL_SensorType type) {
        return SDL_GameControllerHasSensor(controller_, type) == SDL_TRUE &&
               SDL_GameControllerSetSensorEnabled(controller_, type, SDL_TRUE) == 0;
    }
    void close() {
        if (controller_)
            SDL_GameControllerClose(std::exchange(controller_, nullptr));
    }

    Subsystem subsystem_{SDL_INIT_GAMECONTROLLER}; // destroyed last
    SDL_GameController* controller_ = nullptr;
};

} // namespace

bool SDLSensors::exist() {
    if (const Subsystem sensors(SDL_INIT_SENSOR); sensors.isThere() && machineHasBoth())
        return true;
    const Subsystem controllers(SDL_INIT_GAMECONTROLLER);
    const int count = controllers.isThere() ? SDL_NumJoysticks() : 0;
    for (int i = 0; i < count; ++i) {
        if (isOfAKindWithSensors(i))
            return true;
    }
    return false;
}

std::unique_ptr<SDLSensors> SDLSensors::open() {
    if (auto machine = std::make_unique<MachineSensors>(); machine->open())
        return machine;
    if (auto controller = std::make_unique<ControllerSensors>(); controller->open())
        return controller;
    return nullptr;
}

} // namespace zanto
