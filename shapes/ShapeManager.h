#pragma once

#include <functional>
#include <memory>
#include <osg/Group>
#include <vector>

#include "Shape.h"

// A view's shapes in show order, hung under the view's shape group. Called
// under the scene lock.
class ShapeManager {
public:
    explicit ShapeManager(osg::Group* group) : group_(group) {}

    // False (and the shape dropped) when its id is listed already.
    bool add(std::unique_ptr<Shape> shape);
    // False when no shape has the id.
    bool remove(ObjectId id);
    void clear();
    Shape* find(ObjectId id) const;
    int count() const { return static_cast<int>(shapes_.size()); }
    void forEach(const std::function<void(Shape&)>& f) const;

private:
    osg::ref_ptr<osg::Group> group_;
    std::vector<std::unique_ptr<Shape>> shapes_;
};
