"""A show that is played from Python: `tessara-headless` at the other end of a pipe."""
import json
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAM = ROOT / "build/release/bin/tessara-headless"


class Show:
    """One request a line. A request that fails ends the script with what is wrong."""

    def __init__(self, program, data, clock="real"):
        self.process = subprocess.Popen([str(program), "--clock", clock, "--data", str(data)],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    def _request(self, **request):
        self.process.stdin.write(json.dumps(request) + "\n")
        self.process.stdin.flush()
        reply = json.loads(self.process.stdout.readline())
        if not reply["ok"]:
            sys.exit(f"{str(request)[:200]}: {reply['error']}")
        return reply["result"]

    def call(self, operation, *arguments):
        return self._request(call=operation, args=list(arguments))

    def get(self, path):
        return self._request(get=path)

    def set(self, path, value):
        self._request(set=path, value=value)

    def layer(self, operation, *arguments, **properties):
        """The id of a new layer with these properties."""
        identity = self.call(operation, *arguments)
        for name, value in properties.items():
            self.set(f"layer:{identity}.{name}", value)
        return identity

    def wait(self, seconds):
        self.call("clock.advance", seconds)

    def end(self):
        self.process.stdin.close()
        self.process.wait()
