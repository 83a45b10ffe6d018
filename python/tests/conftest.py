"""Settings of all tests: nothing is timed, and a sanitized library is slow."""
import os

from hypothesis import settings

settings.register_profile("any machine", deadline=None, max_examples=20 if "MRCOMMON_SANITIZED" in os.environ else 100)
settings.load_profile("any machine")
