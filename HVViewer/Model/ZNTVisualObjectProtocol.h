#pragma once

#include "HVViewer/Model/VisualObjectModel.h"

/// A mesh that a drawer uploads and draws as one triangle strip.
///
/// Owner:  the object owns the arrays behind its model until it dies, those of earlier builds too:
///         a record that was copied out stays good as long as the object.
/// Thread: main.
class ZNTVisualObjectProtocol {
public:
    virtual ~ZNTVisualObjectProtocol() = default;

    [[nodiscard]] VisualObjectModel model() const { return model_; }
    void setModel(VisualObjectModel model) { model_ = model; }

    /// Builds the mesh and replaces the model. Constructors of the classes run it once.
    virtual void buildModel() {}

private:
    VisualObjectModel model_;
};
