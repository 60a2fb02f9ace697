#pragma once

#include <QObject>
#include <optional>
#include <osg/Geometry>
#include <osg/ref_ptr>
#include <vector>

#include "SceneModes.h"

class GLViewer;
class PickHandler;

// Measuring by clicks: while a kind is set, each click in the view picks a
// point (the nearest drawn point, or the surface under the cursor) and the
// camera stays still. The points picked so far and a rubber line from the
// last one to the cursor are drawn over the data; with enough points the
// measurement is added to the view's content and reported.
class MeasureTool : public QObject {
    Q_OBJECT
public:
    // Puts its click handler ahead of the view's camera.
    explicit MeasureTool(GLViewer* view, QObject* parent = nullptr);
    ~MeasureTool() override;

    // No kind: off.
    void setKind(std::optional<MeasureKind> kind);
    std::optional<MeasureKind> kind() const { return kind_; }
    // How many points the measurement in progress has.
    int pointCount() const { return static_cast<int>(points_.size()); }
    // Drops the points of the measurement in progress.
    void cancel();

public slots:
    // A click at window position (x, y), y up, as the viewer hands events on.
    void clickAt(float x, float y);

signals:
    void sig_measured(ObjectId id, MeasureKind kind, double value);

private:
    void moveTo(float x, float y);
    // Rebuilds the marks and the rubber line, to the cursor when there is one.
    void redrawProgress();

    GLViewer* view_;
    osg::ref_ptr<PickHandler> handler_;
    osg::ref_ptr<osg::Geode> progress_;
    osg::ref_ptr<osg::Geometry> marks_;
    osg::ref_ptr<osg::Geometry> rubber_;
    std::optional<MeasureKind> kind_;
    std::vector<osg::Vec3d> points_;
    std::optional<osg::Vec3d> cursor_;
};
