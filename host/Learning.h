#pragma once

namespace host
{
    // After a pairing the library's reader notes the device's LE side in its data store, "MyLEData", some 4 s later and
    // on a thread that ends with the process. Waits until it is done; false when it is not within 8 s.
    bool WaitForLearning();
} // namespace host
