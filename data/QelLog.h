#pragma once

#include <QLoggingCategory>

#include "QelDataExport.h"

// The one logging category of both libraries, "qel3dgraphics". Debug and
// info messages are off unless a host enables them, for example with
// QT_LOGGING_RULES="qel3dgraphics.debug=true"; warnings are on.
QEL_DATA_API const QLoggingCategory& qelLog();
