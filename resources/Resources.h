#pragma once

/**
 * Makes the pictures under ":/bmp/image/", ":/png/image/" and ":/icons/image/" known to Qt.
 *
 * They lie in a static library, whose own registration the linker drops from a program that names nothing in
 * it: call this before the first picture is loaded. It needs no QApplication, and further calls do nothing.
 * The pictures are forgotten again when the library or program that they were linked into is unloaded.
 */
void initResources();
