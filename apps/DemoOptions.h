#pragma once

#include <QString>
#include <QStringList>
#include <vector>

// The demo viewer's command line.
struct DemoOptions {
    QStringList files;
    QString screenshot;  // empty: run interactively
    bool haveResolution = false;
    double resolution[3] = {1, 1, 1};
    double offset[3] = {0, 0, 0};
    int view = -1;            // a Qel3DPerspective, or -1 for the demo's own oblique view
    bool ownColours = false;  // --colors own
    int width = 1000, height = 800;
    bool scan = false;   // stream the sample line by line
    bool axis = true;    // the measuring box with its scale
    bool legend = true;  // the colour bar
    QString background;  // "white" or empty for the default black
    // --measure with 2, 3 or 4 points (x, y, z each): a distance, an angle
    // or a height drawn in the view.
    std::vector<double> measure;
    // --edl [STRENGTH]: eye-dome lighting at that strength; 0 for off.
    double edl = 0;
    bool help = false;

    // Fills the options from the arguments after the program name; false
    // with a message in error when they are not understood.
    bool parse(const QStringList& arguments, QString* error);

    static const char* usage();
};
