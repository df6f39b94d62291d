#pragma once

/// True if another process of the same user runs the same program file. A copy in another folder is another program
/// with another journal. The first call creates a mutex that exists until the process ends; later calls return its
/// result.
bool PreviousInstance();
