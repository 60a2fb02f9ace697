#include "SensorPose.h"

#include <QFile>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>

QelVector3d SensorPose::ofPcdFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return QelVector3d(0, 0, 0);
    // The header is a few short lines before DATA.
    for (int line = 0; line < 32 && !file.atEnd(); ++line) {
        const QString text = QString::fromLatin1(file.readLine(256)).trimmed();
        const QStringList words = text.split(' ', Qt::SkipEmptyParts);
        if (words.isEmpty()) continue;
        if (words[0] == "DATA") break;
        if (words[0] != "VIEWPOINT" || words.size() < 4) continue;
        bool ok[3] = {false, false, false};
        const QelVector3d at(words[1].toFloat(&ok[0]), words[2].toFloat(&ok[1]),
                             words[3].toFloat(&ok[2]));
        if (ok[0] && ok[1] && ok[2] && std::isfinite(at.x) && std::isfinite(at.y) &&
            std::isfinite(at.z))
            return at;
    }
    return QelVector3d(0, 0, 0);
}

bool SensorPose::isNear(const QelVector3d& sensor, const QelPointCloud& cloud) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    double low[3] = {kInf, kInf, kInf}, high[3] = {-kInf, -kInf, -kInf};
    for (int i = 0; i < cloud.Length(); ++i) {
        const QelVector3d& p = cloud[i];
        const double v[3] = {p.x, p.y, p.z};
        if (!std::isfinite(v[0]) || !std::isfinite(v[1]) || !std::isfinite(v[2])) continue;
        for (int a = 0; a < 3; ++a)
            low[a] = std::min(low[a], v[a]), high[a] = std::max(high[a], v[a]);
    }
    // A sensor sees its scene under a field of view of 10 degrees or more,
    // so the scene spans at least a sixth of its distance: the box grown by
    // ten diagonals on every side holds any sensor that saw it. Map
    // coordinates put a tile thousands of kilometres from the origin.
    const double size = 10.0 * std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
    const double at[3] = {sensor.x, sensor.y, sensor.z};
    for (int a = 0; a < 3; ++a)
        if (!(at[a] >= low[a] - size && at[a] <= high[a] + size)) return false;
    return true;
}
