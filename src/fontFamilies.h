#pragma once

/// Gives each font family that the interface names, and that other systems bring along, the free
/// families that can stand in for it: CJK sans, CJK serif and monospace. Needs the application
/// object; call it before the first widget is made.
void substituteFontFamilies();
