// Measures how fast a drive can be purged, with dummy data.
#pragma once

#include <string>

/// Tests a drive and stores its speed, MB/s for one overwrite, in the session state. Returns false,
/// after telling the user why, when the speed cannot be measured; the drive then keeps its previous
/// speed. With blnShowResult the result is shown.
bool TestPurgeSpeed(char chrDrive, bool blnShowResult, float& sngSpeed);
/// The speed as text: two decimals, three below 1 MB/s.
std::string SpeedText(float sngSpeed);
/// "Test purge speed", from the first query to the result.
void TestPurgeSpeedCommand();
