#include "ShapeManager.h"

#include <algorithm>

bool ShapeManager::add(std::unique_ptr<Shape> shape) {
    if (find(shape->getId())) return false;
    group_->addChild(shape->getNode().get());
    shapes_.push_back(std::move(shape));
    return true;
}

bool ShapeManager::remove(ObjectId id) {
    auto it = std::find_if(shapes_.begin(), shapes_.end(),
                           [id](const std::unique_ptr<Shape>& s) { return s->getId() == id; });
    if (it == shapes_.end()) return false;
    group_->removeChild((*it)->getNode().get());
    shapes_.erase(it);
    return true;
}

void ShapeManager::clear() {
    for (const std::unique_ptr<Shape>& s : shapes_)
        group_->removeChild(s->getNode().get());
    shapes_.clear();
}

Shape* ShapeManager::find(ObjectId id) const {
    for (const std::unique_ptr<Shape>& s : shapes_)
        if (s->getId() == id) return s.get();
    return nullptr;
}

void ShapeManager::forEach(const std::function<void(Shape&)>& f) const {
    for (const std::unique_ptr<Shape>& s : shapes_)
        f(*s);
}
