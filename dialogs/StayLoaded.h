#pragma once

/**
 * Keeps this library in the process until its end. To be called before Qt learns of a type or a class of
 * ours: Qt keeps such addresses for good, and a host that unloaded the library behind a dialog would leave
 * them dangling. A host that never shows a dialog can unload it as any other.
 */
void stayLoaded();
