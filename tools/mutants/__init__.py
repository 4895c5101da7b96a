"""The parts of tools/mutants.py: places to change in a source, the scratch copy with the changes, and the tests of the copy."""
