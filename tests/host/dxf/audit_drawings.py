"""Reads each drawing with ezdxf and runs its auditor; fails when one of them has something to say."""
import sys

import ezdxf

faulty = False
for path in sys.argv[1:]:
    auditor = ezdxf.readfile(path).audit()
    for error in auditor.errors + auditor.fixes:
        print(path, error.message)
        faulty = True
sys.exit(1 if faulty else 0)
