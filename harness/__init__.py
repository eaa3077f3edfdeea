"""A whole desktop for the tests, and everything that drives and watches it from outside. What a
display server must bring for that is in session.py; x11 is one."""
