#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class View;

/// A row or column of views that fills their superview from edge to edge, all of the same length,
/// with one fixed gap between neighbours.
///
/// Owner:  views are held weakly; an active constraint is held by the superview of its views.
/// Thread: main.
class LayoutConstraint : public std::enable_shared_from_this<LayoutConstraint> {
public:
    enum class Axis { Horizontal, Vertical };

    /// Reads a format such as `V:|[a]|` or `|[a(==b)]-2-[b]|`: `H:` (or nothing) or `V:`, an edge,
    /// views with the same gap in points between them, the other edge. Where there are several
    /// views they are of equal length. `options` says how they line up across the axis; it is kept
    /// but changes nothing, as every view has a constraint of its own there.
    ///
    /// Errors: an assertion failure for a format that is none of these or names an unknown view.
    [[nodiscard]] static std::vector<std::shared_ptr<LayoutConstraint>>
    constraintsWithVisualFormat(std::string_view format, unsigned options,
                                const std::map<std::string, std::shared_ptr<View>>& views);

    /// Takes effect at the superview's next layout. A constraint that is active stays so once.
    static void
    activateConstraints(const std::vector<std::shared_ptr<LayoutConstraint>>& constraints);
    static void
    deactivateConstraints(const std::vector<std::shared_ptr<LayoutConstraint>>& constraints);

    [[nodiscard]] bool isActive() const;
    /// As given with the format.
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
