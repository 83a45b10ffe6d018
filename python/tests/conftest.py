"""Settings of all tests."""
from hypothesis import settings

settings.register_profile("any machine", deadline=None)  # nothing is timed
settings.load_profile("any machine")
