// The shared library is made of the archives of dwg, database and application; this file only gives it a source.
