#pragma once

#include "HVViewer/Model/VisualObjectModel.h"

/// A mesh that a drawer uploads and draws as one triangle strip.
///
/// Owner:  the object owns the arrays of its model and of earlier builds until it is destroyed, so
///         a copy of the model is valid as long as the object.
/// Thread: main.
class ZNTVisualObjectProtocol {
public:
    virtual ~ZNTVisualObjectProtocol() = default;

    [[nodiscard]] VisualObjectModel model() const { return model_; }
    void setModel(VisualObjectModel model) { model_ = model; }

    /// Builds the mesh and replaces the model. The constructors of the subclasses call it once.
    virtual void buildModel() {}

private:
    VisualObjectModel model_;
};
