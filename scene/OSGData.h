#pragma once

#include <functional>
#include <future>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/MatrixTransform>
#include <osg/PolygonMode>
#include <osg/PrimitiveSet>
#include <osg/ref_ptr>

#include "SceneItem.h"
#include "SceneModes.h"

class QelColorArray;
class SliceOrder;

// The base of every render object: the scene nodes and the vertex, colour
// and normal arrays of one piece of data, with what all kinds share (id,
// kind, validity, point size, line width, visibility, model matrix, height
// range, colour mode). Owned by the window's registry.
class OSGData : public SceneItem {
public:
    OSGData(ObjectId id, ObjectKind kind, bool useHeightColours);
    ~OSGData() override;
    OSGData(const OSGData&) = delete;
    OSGData& operator=(const OSGData&) = delete;

    virtual void setRenderMode(RenderMode mode) = 0;
    virtual osg::ref_ptr<osg::PrimitiveSet> rebuildGeometry() { return nullptr; }
    virtual ObjectKind kind() const { return kind_; }
    virtual RenderMode renderMode() const { return renderMode_; }
    // One colour per vertex, or one for all; false (and nothing changed)
    // for any other count.
    virtual bool setColors(const QelColorArray& colours);
    virtual void setPointSize(float size);
    virtual void setLineWidth(float width);
    virtual float pointSize() const { return pointSize_; }
    virtual float lineWidth() const { return lineWidth_; }
    virtual osg::Node* node() const { return root_.get(); }
    virtual osg::Vec3Array* vertexArray() const { return vertices_.get(); }
    virtual osg::Vec4Array* colorArray() const { return colors_.get(); }
    // The colours as drawn (0..1), whatever array holds them.
    virtual size_t colourCount() const { return colors_->size(); }
    virtual osg::Vec4 colourAt(size_t i) const { return (*colors_)[i]; }
    // Colours every vertex by its height against [min, max].
    virtual void applyColourMap(double min, double max);
    virtual void applyDefaultColours();
    // Call after changing the colour array in place.
    void refreshColours();
    virtual void setUseHeightColours(bool on) { useHeightColours_ = on; }
    // Whether the colours come from the heights, so that a new height range
    // recolours the object; not for own colours or colours a host set.
    virtual bool heightColoured() const { return !coloursLocked_ && !hostColoured_; }
    void markHostColoured() { hostColoured_ = true; }
    // While the camera moves, draw at most 'budget' points (0: all).
    virtual void setDrawBudget(unsigned int) {}
    // How many slices a progressive picture of the object takes with this
    // budget (1: drawn whole at once); slices [from, to) are drawn next.
    virtual unsigned int sliceCount(unsigned int) const { return 1; }
    virtual void setDrawSlices(unsigned int, unsigned int, unsigned int) {}
    // The index of the host's point a vertex shows (the same but in clouds
    // stored in another order).
    virtual size_t pointIndexOf(size_t vertex) const { return vertex; }
    // Vertices (or indices) the geometry's first primitive set draws now.
    unsigned int drawnCount() const;
    virtual ObjectId id() const { return id_; }
    virtual double minZ() const { return minZ_; }
    virtual double maxZ() const { return maxZ_; }
    virtual int isValid() const { return valid_; }
    virtual void setVisible(bool visible);
    virtual void setMatrix(const osg::Matrix& matrix);

    // As an item of the view's content: colours a host set keep the object
    // from being recoloured by height.
    ObjectId itemId() const override { return id(); }
    void setItemVisible(bool visible) override { setVisible(visible); }
    bool setItemColours(const osg::Vec4Array& colours) override;
    bool applyItemMatrix(const osg::Matrix& matrix) override;
    bool setItemPointSize(float size) override;
    bool setItemLineWidth(float width) override;
    osg::BoundingBox itemBounds() const override;

    osg::Geometry* geometry() const { return geometry_.get(); }
    osg::MatrixTransform* transform() const { return transform_.get(); }
    bool useHeightColours() const { return useHeightColours_; }

    // The height colour of z against [min, max] with the process-wide table:
    // red above the range, blue at or below its bottom, the table (looked up
    // from its high end) in between.
    static osg::Vec4 heightColour(double z, double min, double max);
    // Converts 0..255 colours to 0..1 and reports the smallest alpha (when
    // minAlpha is not null).
    static osg::ref_ptr<osg::Vec4Array> toFloatColours(const QelColorArray& colours, int* minAlpha);

protected:
    // Colours every vertex by its height against [min, max] into 'out', an
    // osg::Vec4Array or a normalised osg::Vec4ubArray.
    template <typename Array>
    void colourByHeight(Array& out, double min, double max) const;
    // Copies 0..255 colours into 'out' and returns their smallest alpha.
    // With an order given, colours one per vertex go to their vertices'
    // places in it.
    template <typename Array>
    static int copyColours(Array& out, const QelColorArray& colours,
                           const SliceOrder* order = nullptr);
    // One colour per vertex, or one for all.
    bool fitsVertices(const QelColorArray& colours) const;

    // Blending and bin for colours whose smallest alpha is minAlpha.
    void applyAlpha(int minAlpha);
    // Makes the geometry draw 'colours' (one for all, or one per vertex).
    void bindColours(osg::Array* colours);
    // Sets array[i] = valueAt(i) for i < n in one pass: an array that holds n
    // already is overwritten, any other is refilled without being cleared
    // first (fresh memory is written once).
    template <typename Array, typename ValueAt>
    static void fillArray(Array& array, size_t n, ValueAt valueAt) {
        if (array.size() == n) {
            for (size_t i = 0; i < n; ++i)
                array[i] = valueAt(i);
        } else {
            array.clear();
            array.reserve(n);
            for (size_t i = 0; i < n; ++i)
                array.push_back(valueAt(i));
        }
        array.dirty();
    }
    void widenHeightRange(double z);
    // Runs 'task' on a thread of its own; when no thread can be started it
    // returns an empty future and the caller does the work itself.
    static std::future<void> startBeside(std::function<void()> task);
    // Line (wireframe) or fill (faces) on both faces.
    static void setPolygonMode(osg::PolygonMode* polygonMode, RenderMode mode);
    // Moves a surface geometry from render mode 'from' to 'to': points
    // draw the first pointCount vertices without a polygon mode; wireframe
    // and faces draw the triangles that makeTriangles gives (asked only when
    // coming from points) in line or fill polygon mode.
    static void switchSurfaceMode(
        osg::Geometry* geometry, osg::PolygonMode* polygonMode, RenderMode from, RenderMode to,
        GLsizei pointCount, const std::function<osg::ref_ptr<osg::PrimitiveSet>()>& makeTriangles);

    ObjectId id_;
    int valid_ = 0;
    osg::ref_ptr<osg::Geode> root_;
    osg::ref_ptr<osg::Geometry> geometry_;
    osg::ref_ptr<osg::Vec3Array> vertices_;
    osg::ref_ptr<osg::Vec4Array> colors_;
    osg::ref_ptr<osg::Vec3Array> normals_;
    osg::ref_ptr<osg::MatrixTransform> transform_;
    RenderMode renderMode_ = RenderMode::Points;
    int coloursLocked_ = 0;
    ObjectKind kind_;
    float pointSize_ = 1.0f;
    float lineWidth_ = 1.0f;
    double minZ_;
    double maxZ_;
    bool useHeightColours_;
    bool hostColoured_ = false;
};
