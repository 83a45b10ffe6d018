// Output: the standard output of the program, checked: a full disk ends the program instead of losing lines.
//     print("%d frames\n", 60);
//     finishOutput();                           // before exit status 0
#ifndef FOUNTAIN_OUTPUT_H
#define FOUNTAIN_OUTPUT_H

/// Prints as std::printf does. Throws FileError if the text cannot be written.
__attribute__((format(printf, 1, 2))) void print(char const* format, ...);

/// Writes what is still buffered. Throws FileError if that fails.
void finishOutput();

#endif
