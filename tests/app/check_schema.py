"""Whether what --resumen --json prints is what docs/resumen.schema.json describes.

    check_schema.py PROGRAM SOURCE_FOLDER

Exits with 77 where python3-jsonschema is not installed.
"""
import copy
import json
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    from jsonschema import Draft202012Validator
except ImportError:
    print("python3-jsonschema is not installed: not tried")
    sys.exit(77)

# Each state of the second opinion, and what no project should hold.
PROJECTS = {
    "ok": '{"motors": [{"positionX": 1}, {"positionX": 6}, {"positionX": 11}], "loads": [{"mass": 9, "groupId": 2}]}',
    "sin_motores": '{"loads": [{"name": "a", "groupId": -1}]}',
    "sin_carga": '{"trussSelfWeight": 0, "motors": [{}]}',
    "un_motor": '{"motors": [{"positionX": 6}]}',
    "vuelca": '{"motors": [{"positionX": 1}, {"positionX": 2}]}',
    "al_borde": '{"motors": [{"positionX": 1}, {"positionX": 6}]}',
    "no_calculable": '{"trussLength": 1e39, "trussSelfWeight": 1e39, "motors": [{"positionX": -1e39}], "loads": [{"mass": 1e39}]}',
    "no_converge": '{"trussLength": 1e7, "motors": [{}, {"positionX": 1}, {"positionX": 1e7}]}',
}


def strict(schema):
    """The same schema, in which a member that it does not describe is a mistake."""
    if isinstance(schema, dict):
        schema = {key: strict(value) for key, value in schema.items()}
        if "properties" in schema:
            schema.setdefault("additionalProperties", False)
    return schema


def printed(program, options):
    """The document, and the text of it."""
    run = subprocess.run([program, *options], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    if run.returncode not in (0, 1, 2):
        sys.exit(f"{options}: exit code {run.returncode}\n{run.stderr.decode()}")
    return json.loads(run.stdout, parse_constant=lambda word: sys.exit(f"{options}: {word}"))


def check(validator, document, what):
    errors = [f"{what}: {error.json_path}: {error.message}" for error in validator.iter_errors(document)]
    if errors:
        sys.exit("\n".join(errors))


def check_that_mistakes_are_found(validator, document):
    """A schema that takes anything would not be noticed otherwise."""
    spoilers = {
        "missing member": lambda project: project.pop("cargas"),
        "text for a number": lambda project: project["motores"][0].update(en_punto_kg="1"),
        "unknown verdict": lambda project: project["motores"][0].update(veredicto="bien"),
        "unknown state": lambda project: project["contraste"].update(estado="quizá"),
        "motor from 0": lambda project: project["contraste"]["motores"][0].update(un_flojo_cual=0),
        "unknown member": lambda project: project["contraste"].update(otra=1),
    }
    for mistake, spoil in spoilers.items():
        spoiled = copy.deepcopy(document)
        spoil(spoiled["proyectos"][0])
        if validator.is_valid(spoiled):
            sys.exit(f"the schema takes this: {mistake}")


def main():
    program, source = sys.argv[1], Path(sys.argv[2])
    schema = json.loads((source / "docs" / "resumen.schema.json").read_text(encoding="utf-8"))
    Draft202012Validator.check_schema(schema)
    validator = Draft202012Validator(strict(schema))

    examples = sorted(str(path) for path in (source / "examples").glob("*.rig"))
    with tempfile.TemporaryDirectory() as folder:
        files = []
        for state, text in PROJECTS.items():
            path = Path(folder, f"{state}.rig")
            path.write_text(text, encoding="utf-8")
            files.append(str(path))
        missing = str(Path(folder, "nada.rig"))
        everything = [*examples, *files, missing]

        for options in ([], ["--sin-contraste"], ["--contraste"], ["--contraste", "--flecha", "15"]):
            document = printed(program, ["--resumen", "--json", *options, *everything])
            check(validator, document, " ".join(options) or "--resumen")
            if len(document["proyectos"]) != len(everything) - 1 or len(document["errores"]) != 1:
                sys.exit(f"{options}: not every file is told")

        document = printed(program, ["--contraste", "--json", *files])
        states = [project["contraste"]["estado"] for project in document["proyectos"]]
        if states != list(PROJECTS):
            sys.exit(f"expected {list(PROJECTS)}, told {states}")
        check_that_mistakes_are_found(validator, document)


main()
