@rem Stands for the file manager in tests: Wine's own waits until its window is closed.
