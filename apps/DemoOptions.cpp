#include "DemoOptions.h"

#include <cmath>

namespace {

const char* const kViews[] = {"top", "bottom", "front", "back", "left", "right", "oblique"};

// "a,b,c" as count finite numbers.
bool numbers(const QString& text, int count, double* out) {
    const QStringList parts = text.split(',');
    if (parts.size() != count) return false;
    for (int i = 0; i < count; ++i) {
        bool ok = false;
        out[i] = parts[i].trimmed().toDouble(&ok);
        if (!ok || !std::isfinite(out[i])) return false;
    }
    return true;
}

// The eye-dome lighting of --edl without a number: mild.
constexpr double kDefaultEdlStrength = 0.4;

}  // namespace

const char* DemoOptions::usage() {
    return "usage: qel_demo_viewer [options] [FILES...]\n"
           "\n"
           "Shows point clouds (ply pcd xyz txt asc xyzn xyzrgb obj), meshes (stl obj off ply)\n"
           "and range images (png tif bmp jpg csv) in one 3D window; without files, the\n"
           "bundled machined-part sample.\n"
           "\n"
           "  --screenshot FILE      render once, save the whole window (BMP, PNG or JPG by\n"
           "                         the suffix) and exit\n"
           "  --resolution X,Y,Z     pixel size in x and y and height per sample unit of\n"
           "                         range images (their files carry none); without it the\n"
           "                         height scale is chosen so the heights span a third of\n"
           "                         the larger extent\n"
           "  --offset X,Y,Z         offsets added to range-image coordinates\n"
           "  --view NAME            top, bottom, front, back, left, right or oblique\n"
           "  --colors height|own    colour by height (default) or by the file's colours\n"
           "  --size WIDTH,HEIGHT    window size in pixels (default 1000,800)\n"
           "  --scan                 stream the sample line by line as a scanner would, then\n"
           "                         show the finished image; with --screenshot a picture\n"
           "                         half-way (FILE with -half before its suffix) and one at\n"
           "                         the end\n"
           "  --no-axis              without the measuring box and its scale\n"
           "  --no-legend            without the colour bar\n"
           "  --background white     a white background (the default is black)\n"
           "  --measure X1,Y1,Z1,X2,Y2,Z2[,X3,Y3,Z3[,X4,Y4,Z4]]\n"
           "                         draws the distance of two points, the angle at the\n"
           "                         second of three, or the height of the fourth above\n"
           "                         the plane of the first three\n"
           "  --edl [STRENGTH]       eye-dome lighting: shades each point by how far its\n"
           "                         neighbours lie in front of it (strength 0.4 without\n"
           "                         a number; more is darker)\n"
           "  --help                 this text\n"
           "\n"
           "Exit status: 0 when the sample or at least one named file was shown; 1 for a\n"
           "bad command line or a failure of the window; 2 when no named file could be\n"
           "shown. Files that cannot be shown are named on standard error with their\n"
           "status code and its text.\n";
}

bool DemoOptions::parse(const QStringList& args, QString* error) {
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == "--help" || a == "-h") {
            help = true;
            continue;
        }
        if (a == "--scan" || a == "--no-axis" || a == "--no-legend") {
            scan = scan || a == "--scan";
            axis = axis && a != "--no-axis";
            legend = legend && a != "--no-legend";
            continue;
        }
        if (a == "--edl") {
            // The strength is optional: a number right after, when there is one.
            bool number = false;
            const double strength = i + 1 < args.size() ? args[i + 1].toDouble(&number) : 0.0;
            if (number && !(std::isfinite(strength) && strength > 0)) {
                *error = "--edl needs a positive strength";
                return false;
            }
            edl = number ? strength : kDefaultEdlStrength;
            i += number ? 1 : 0;
            continue;
        }
        if (!a.startsWith("--")) {
            files << a;
            continue;
        }
        if (i + 1 >= args.size()) {
            *error = a + " needs a value";
            return false;
        }
        const QString value = args[++i];
        bool ok = true;
        if (a == "--screenshot") {
            screenshot = value;
        } else if (a == "--resolution") {
            ok = numbers(value, 3, resolution) && resolution[0] > 0 && resolution[1] > 0 &&
                 resolution[2] != 0;
            haveResolution = true;
        } else if (a == "--offset") {
            ok = numbers(value, 3, offset);
        } else if (a == "--view") {
            view = -1;
            for (int v = 0; v < 7; ++v)
                if (value == kViews[v]) view = v;
            ok = view >= 0;
        } else if (a == "--background") {
            ok = value == "white" || value == "black";
            background = value;
        } else if (a == "--colors") {
            ok = value == "height" || value == "own";
            ownColours = value == "own";
        } else if (a == "--measure") {
            // Two, three or four points: a distance, an angle or a height.
            const int count = static_cast<int>(value.split(',').size());
            measure.assign(size_t(count), 0.0);
            ok = (count == 6 || count == 9 || count == 12) && numbers(value, count, measure.data());
        } else if (a == "--size") {
            double size[2] = {0, 0};
            ok = numbers(value, 2, size) && size[0] >= 100 && size[1] >= 100 && size[0] <= 8192 &&
                 size[1] <= 8192;
            width = static_cast<int>(size[0]);
            height = static_cast<int>(size[1]);
        } else {
            *error = "unknown option " + a;
            return false;
        }
        if (!ok) {
            *error = "bad value for " + a + ": " + value;
            return false;
        }
    }
    return true;
}
