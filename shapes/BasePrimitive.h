#pragma once

#include "SceneModes.h"

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/MatrixTransform>

// The base of every shape builder: the scene nodes (root geode -> transform
// -> geometry), the vertex, normal and colour arrays, and the id, kind,
// point size and line width of one shape. A builder fills the arrays in its
// local frame for the line form (buildLines) or the surface form
// (buildSurface); the pose lives in the transform.
class BasePrimitive {
public:
    BasePrimitive();
    virtual ~BasePrimitive() = default;
    BasePrimitive(const BasePrimitive&) = delete;
    BasePrimitive& operator=(const BasePrimitive&) = delete;

    osg::ref_ptr<osg::Geode> getNode() const { return root_; }
    virtual void setVisible(bool visible);
    // The given matrix acts first, then the current one.
    virtual void applyMatrix(const osg::Matrixd& matrix);
    virtual void setId(ObjectId id) { id_ = id; }
    virtual ObjectId getId() const { return id_; }
    virtual int getType() const { return type_; }
    virtual void buildLines() = 0;
    virtual void buildSurface() = 0;
    virtual void updatePointSprite() {}
    virtual void setLineWidth(float width);
    virtual void setPointSize(float size);
    // Empties vertices and normals and drops every primitive set.
    virtual void clearGeometry();
    // Infinite shapes re-size themselves to the scene's bounds.
    virtual void fitToScene(const osg::Vec3& minCorner, const osg::Vec3& maxCorner, float radius,
                            const osg::Vec3& centre);
    // Whether fitToScene changes the shape (infinite lines and planes).
    virtual bool resizesToScene() const { return false; }

    osg::Geometry* geometry() const { return geometry_.get(); }
    osg::MatrixTransform* transform() const { return transform_.get(); }
    const osg::Vec3Array* vertices() const { return vertices_.get(); }
    const osg::Vec3Array* normals() const { return normals_.get(); }
    const osg::Vec4Array* colors() const { return colors_.get(); }
    float pointSize() const { return pointSize_; }
    float lineWidth() const { return lineWidth_; }

protected:
    // Adds the vertices appended since `first` as one draw of `mode`.
    void drawArrays(GLenum mode, unsigned int first);
    // Adds line elements over existing vertices.
    void drawLineElements(const std::vector<unsigned int>& indices);
    void append(const osg::Vec3& vertex, const osg::Vec3& normal);
    void append(const osg::Vec3& vertex) { vertices_->push_back(vertex); }
    void setPose(const osg::Matrixd& pose) { transform_->setMatrix(pose); }

    osg::ref_ptr<osg::Geode> root_;
    osg::ref_ptr<osg::Geometry> geometry_;
    osg::ref_ptr<osg::MatrixTransform> transform_;
    osg::ref_ptr<osg::Vec3Array> vertices_;
    osg::ref_ptr<osg::Vec3Array> normals_;
    osg::ref_ptr<osg::Vec4Array> colors_;
    ObjectId id_ = 0;
    int type_ = 0;
    float pointSize_ = 10.0f;
    float lineWidth_ = 2.0f;
};
