#include "QelLog.h"

Q_LOGGING_CATEGORY(qelLog, "qel3dgraphics", QtWarningMsg)
