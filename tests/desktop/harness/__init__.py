"""A whole X desktop for the tests, and everything that drives and watches it from outside."""
