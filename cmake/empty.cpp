// Stands for a folder that has no source yet.
