#pragma once

/**
 * Prints the peak memory that one listed certificate costs, over the size of its record, and the allocations
 * that one flat call makes.
 */
void printMemory();
