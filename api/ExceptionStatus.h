#pragma once

// The status of the exception being handled, for the catch-all of an
// exported function: nothing may be thrown into the host. Memory running
// out while data is built is 11501005 (too many elements), anything else
// 11000013 (the object is not usable). Logged as a warning.
namespace QelStatus {
long ofCurrentException() noexcept;
}
