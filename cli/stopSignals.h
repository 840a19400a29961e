#pragma once

/// Lets Ctrl+C, and the end of `limitSeconds` if that is above 0, stop the calculation that runs.
/// To be called once, before it starts.
void installStopSignals(double limitSeconds);

/// Whether Ctrl+C was pressed.
bool wasInterrupted();
/// Whether that, or the end of the time.
bool wasStopped();
