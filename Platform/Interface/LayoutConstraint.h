#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class View;

/// A row or column of views that fills their superview from edge to edge. All views have the same
/// length, with one fixed gap between neighbours.
///
/// Owner:  views are held weakly; the superview of the views holds an active constraint.
/// Thread: main.
class LayoutConstraint : public std::enable_shared_from_this<LayoutConstraint> {
public:
    enum class Axis { Horizontal, Vertical };

    /// Parses a format such as `V:|[a]|` or `|[a(==b)]-2-[b]|`: `H:` (or nothing) or `V:`, an edge,
    /// views with the same gap in points between them, the other edge. Several views are always of
    /// equal length. `options` is their alignment across the axis. It is stored without effect,
    /// because every view has a constraint of its own for that axis.
    ///
    /// Errors: an assertion failure for any other format and for an unknown view.
    [[nodiscard]] static std::vector<std::shared_ptr<LayoutConstraint>>
    constraintsWithVisualFormat(std::string_view format, unsigned options,
                                const std::map<std::string, std::shared_ptr<View>>& views);

    /// Takes effect at the superview's next layout. No-op for a constraint that is active already.
    static void
    activateConstraints(const std::vector<std::shared_ptr<LayoutConstraint>>& constraints);
    static void
    deactivateConstraints(const std::vector<std::shared_ptr<LayoutConstraint>>& constraints);

    [[nodiscard]] bool isActive() const;
    /// The value that was passed with the format.
    [[nodiscard]] unsigned options() const { return options_; }

    /// Sets the views' frames along the axis.
    void apply(const View& superview) const;

private:
    LayoutConstraint(Axis axis, std::vector<std::weak_ptr<View>> views, double gap,
                     unsigned options);
    [[nodiscard]] std::shared_ptr<View> superview() const;

    Axis axis_;
    std::vector<std::weak_ptr<View>> views_;
    double gap_;
    unsigned options_;
};

} // namespace platform
