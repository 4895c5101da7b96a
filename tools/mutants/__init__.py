"""The parts of tools/mutants.py: where a source can be changed, the scratch copy that holds the changes, and the tests over it."""
