#pragma once

/// True if the same program file is already running for the same user. A copy of the program in another folder is
/// another program with another journal. The first call marks this process as running until it ends; later calls repeat
/// its answer.
bool PreviousInstance();
