#pragma once

#include <QObject>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <osg/BoundingBox>
#include <osg/BoundingSphere>
#include <osg/Group>

#include "MeasurementSet.h"
#include "QelRangeImageParameter.h"
#include "SceneModes.h"
#include "TextOverlayManager.h"
#include "TextPrototype.h"

class OSGData;
class OSGDataManager;
class OSGDataStream;
class OSGPointCloud;
class QelColor;
class QelColorArray;
class QelImage;
class QelMatrix4;
class QelPointCloud;
class QelRangeImage;
class QelTriangleMesh;
class QelVar;
class QelVector3d;
class Qel3DShape;
class SceneItem;
class SceneLock;
class Shape;
class ShapeManager;

// What a view shows: the render objects (streams among them), the shapes
// and the text overlays, each under a group node of its own. Every change
// takes the view's scene lock, then tells the view through a signal what it
// has to follow (bounds, the info text, a redraw). Adds return the new id
// or a status code >= 11000000.
class SceneContent : public QObject {
    Q_OBJECT
public:
    SceneContent();
    ~SceneContent() override;

    // The view's scene lock, once the view has one (null: no frame runs).
    void setLock(SceneLock* lock) { lock_ = lock; }
    osg::Group* dataGroup() const { return dataGroup_.get(); }
    osg::Group* shapeGroup() const { return shapeGroup_.get(); }
    osg::Group* textGroup() const { return textOverlays_.group(); }
    osg::Group* measureGroup() const { return measurements_.group(); }

    // Whatever has the id: a render object, a shape, a text overlay or a
    // measurement.
    SceneItem* find(ObjectId id) const;
    OSGDataManager& registry() const { return *registry_; }
    const ShapeManager& shapes() const { return *shapes_; }
    const TextOverlayManager& textOverlays() const { return textOverlays_; }
    const MeasurementSet& measurements() const { return measurements_; }
    int renderObjectCount() const;
    int shapeCount() const;
    int textOverlayCount() const { return textOverlays_.count(); }
    // The box of the render objects (invalid without any).
    osg::BoundingBox dataBounds() const;
    // Infinite lines and planes follow the data's bounds.
    void fitShapesToScene();

    // Render objects (SceneContentObjects.cpp). replace: the new object takes
    // the place of every render object once built and accepted; a refused
    // one changes nothing.
    long addPointCloud(const QelPointCloud& cloud, bool replace = false);
    long addRangeImage(const QelRangeImage& image, bool replace = false);
    long addTriangleMesh(const QelTriangleMesh& mesh, bool replace = false);
    long addImage(const QelImage& image, bool replace = false);
    long clearAllPointClouds();
    long clearAllRangeImages();
    long clearAllTriangleMeshes();
    long clearRenderObject(ObjectId id);
    // Render objects, shapes and texts.
    long clearScene();
    long setElementState(ObjectId id, RenderMode mode);
    void setElementStateForAll(RenderMode mode);
    long setPointRenderMode(ObjectId id, PointRenderMode mode);
    void setSamplingRatio(int step) { samplingStep_ = step; }
    void setUseHeightColours(bool on);
    // Recolours every height-coloured render object against [min, max].
    void applyHeightRange(double min, double max);
    RenderMode defaultRenderMode() const { return defaultMode_; }
    const QStringList& infoText() const { return infoText_; }

    // What has the id, whatever it is: 11100022 when nothing has it or the
    // change does not apply to it.
    long setModelMatrix(ObjectId id, const QelMatrix4& matrix);
    long setVisible(ObjectId id, bool visible);
    long setColours(ObjectId id, const QelColorArray& colours);
    long setPointSize(ObjectId id, float size);
    long setLineWidth(ObjectId id, float width);

    // Measurements (SceneContentMeasure.cpp): add returns the new id, or
    // 11200003 when the points do not make the kind; they go with the shapes.
    long addMeasurement(MeasureKind kind, const std::vector<osg::Vec3d>& points);
    long measurement(ObjectId id, double* value) const;
    long clearMeasurement(ObjectId id);
    long clearAllMeasurements();
    // The colour of lines and labels, the inverse of the background.
    void setMeasurementColour(const osg::Vec4& colour);

    // Shapes. Show returns the new id, or 11100004 when the description is
    // refused (the id is used up either way). Clearing them all clears the
    // measurements too; clearing an id clears a measurement of that id.
    long showShape(const Qel3DShape& shape);
    long clearShape(ObjectId id);
    long clearAllShapes();
    long setShapeMode(ObjectId id, RenderMode mode);

    // Screen-facing texts (narrow strings are GBK).
    long addTextOverlay(const QelVar& text, const QelVector3d& position, float size,
                        const QelColor& colour);
    long removeTextOverlay(ObjectId id);
    long removeAllTextOverlays();
    // Loads the overlays' font ahead of the first text.
    void loadFont() { textPrototype_.text(); }

    // Streamed range images (SceneContentStream.cpp). Initial clears the
    // scene and returns the stream's id; the steps come from the sampling
    // ratio or the stream's own table.
    long initialRangeImage(QelRangeImageParameter parameter);
    long appendDataStream(ObjectId id, const void* samples, const void* colours, int type,
                          int startLine, int endLine);
    long finishDataStream(ObjectId id, QelRangeImage* image);

    // Where the shapes, the text overlays and the measurements lie.
    osg::BoundingBox overlayBounds() const;

signals:
    // Render objects came or went, or changed their drawing: bounds and
    // everything fitted to them follow.
    void sig_dataChanged();
    // The data's colours changed: a whole frame shows them.
    void sig_redraw();
    // A shape, a text overlay or a measurement came, went or changed: they
    // are drawn over the data, which stays as it was.
    void sig_overlayChanged();
    // A stream received lines.
    void sig_streamGrew();
    // Something new arrived; bound (when valid) should come into view.
    void sig_itemAdded(const osg::BoundingSphere& bound);
    void sig_heightRange(double min, double max);
    void sig_infoText(const QStringList& lines);

private:
    // Takes a newly built object: refuses it when unusable or too large,
    // otherwise adds it (after clearing when replace is set). The second
    // form is given the box the object spans, already found to fit.
    long adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info);
    long adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info,
               const osg::BoundingBox& box);
    // A point cloud the next display can build into instead of allocating.
    OSGPointCloud* reusablePointCloud(int points) const;
    void setInfoText(const QStringList& lines);
    // Under the lock, runs change(item) on what has the id; a change that
    // returns false did not apply (11100022).
    long changeItem(ObjectId id, const std::function<bool(SceneItem&)>& change);
    // The same for the render object with the id, whose change returns a status.
    long changeObject(ObjectId id, const std::function<long(OSGData&)>& change);
    OSGDataStream* findStream(ObjectId id) const;
    int samplingStepFor(std::uint64_t width, std::uint64_t height) const;

    SceneLock* lock_ = nullptr;
    osg::ref_ptr<osg::Group> dataGroup_;
    osg::ref_ptr<osg::Group> shapeGroup_;
    std::unique_ptr<OSGDataManager> registry_;
    std::unique_ptr<ShapeManager> shapes_;
    TextOverlayManager textOverlays_;
    MeasurementSet measurements_;
    TextPrototype textPrototype_;
    QStringList infoText_;
    RenderMode defaultMode_ = RenderMode::Faces;
    int samplingStep_ = 0;
    bool useHeightColours_ = true;
};
