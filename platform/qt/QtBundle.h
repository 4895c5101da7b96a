// The translations that are installed with the program: one file "<language>.strings" a language, lines of "key = text".
