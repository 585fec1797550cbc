import pathlib
import sys

import pytest

sys.path.insert(0, str(pathlib.Path(__file__).parent))

import orvanel  # noqa: E402


@pytest.fixture(autouse=True)
def new_user():
    orvanel.clean_user()
    orvanel.write_options()
    yield
    orvanel.clean_user()
