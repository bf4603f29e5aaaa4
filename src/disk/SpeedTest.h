// How fast a drive can be purged: writes dummy data, purges it and takes the time.
#pragma once

#include <string>

/// Tests a drive and stores its speed, MB/s for one overwrite, in the session state. False, after
/// telling the user why, when it cannot be measured: the drive's previous speed stays. With
/// blnShowResult the result text is shown.
bool TestPurgeSpeed(char chrDrive, bool blnShowResult, float& sngSpeed);
/// The speed as its texts write it: two decimals, three below 1 MB/s.
std::string SpeedText(float sngSpeed);
/// "Test purge speed", from the first query to the result.
void TestPurgeSpeedCommand();
