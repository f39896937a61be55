#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Object.h"

#include <cstdint>
#include <memory>

/// The point of the screen that automatic picking checks, and how long a hot spot must stay there
/// before it is reported.
///
/// Owner:  the host application and the controller.
/// Thread: main.
class ZANTO_EXPORT ZNTHotSpotPickingPoint : public platform::Object {
public:
    /// Fractions of the screen in its current orientation: (0, 0) is the top left corner, (1, 1)
    /// the bottom right corner.
    [[nodiscard]] static std::shared_ptr<ZNTHotSpotPickingPoint>
    pickingPointForXPosition(double x, double yPosition);
    ZNTHotSpotPickingPoint(double x, double y) : hKoef_(x), vKoef_(y) {}

    [[nodiscard]] double hKoef() const { return hKoef_; }
    void setHKoef(double fraction) { hKoef_ = fraction; }
    [[nodiscard]] double vKoef() const { return vKoef_; }
    void setVKoef(double fraction) { vKoef_ = fraction; }
    /// How many more checks in a row must find the same hot spot before it is reported.
    [[nodiscard]] std::int64_t rejectRate() const { return rejectRate_; }
    void setRejectRate(std::int64_t looks) { rejectRate_ = looks; }
    /// In side by side the point is in the left half.
    [[nodiscard]] bool sbsModeActive() const { return sbsModeActive_; }
    void markSBSModeActive(bool active) { sbsModeActive_ = active; }

    /// In points of the screen. The getters compute it at every call; a value that is set is never
    /// used.
    [[nodiscard]] double xPosition() const;
    [[nodiscard]] double yPosition() const;
    void setXPosition(double position) { xPosition_ = position; }
    void setYPosition(double position) { yPosition_ = position; }

private:
    double hKoef_;
    double vKoef_;
    std::int64_t rejectRate_ = 1;
    bool sbsModeActive_ = false;
    double xPosition_ = 0;
    double yPosition_ = 0;
};
