' A host in a script whose record set is a class: its marks are ticked in the check list, one by one and all at once.
Option Explicit

Class Campo
    Public Name
    Public Datos
    Public Property Get Value
        Dim codigo
        codigo = Datos.Codigo
        If Name = "Planificar" Then
            Value = InStr(Datos.Marcadas, codigo) > 0
        Else
            Value = codigo
        End If
    End Property
    Public Property Let Value(nuevo)
        Dim codigo
        codigo = Datos.Codigo
        If codigo = "F-3" Then
            Err.Raise 1234, "Gestion", "La fase esta cerrada."
        End If
        WScript.Echo "Planificar de " & codigo & " = " & TypeName(nuevo) & " " & CInt(nuevo)
        Datos.Marcadas = Replace(Datos.Marcadas, codigo, "")
        If nuevo Then
            Datos.Marcadas = Datos.Marcadas & codigo
        End If
    End Property
End Class

Class Campos
    Public Datos
    Public Property Get Count
        Count = 2
    End Property
    Public Function Item(numero)
        Dim uno, nombres
        nombres = Split("Codigo Planificar")
        Set uno = New Campo
        uno.Name = nombres(numero)
        Set uno.Datos = Datos
        Set Item = uno
    End Function
End Class

Class Fases
    Public Codigos
    Public Marcadas
    Public AbsolutePosition
    Public Property Get Codigo
        Dim todos
        todos = Split(Codigos)
        Codigo = todos(AbsolutePosition - 1)
    End Property
    Public Property Get sClassName
        sClassName = "Fases"
    End Property
    Public Property Get RecordCount
        RecordCount = 3
    End Property
    Public Property Get BOF
        BOF = AbsolutePosition < 1
    End Property
    Public Property Get EOF
        EOF = AbsolutePosition > 3
    End Property
    Public Property Get Fields
        Dim todos
        Set todos = New Campos
        Set todos.Datos = Me
        Set Fields = todos
    End Property
    Public Sub MoveFirst
        AbsolutePosition = 1
    End Sub
    Public Sub MoveNext
        AbsolutePosition = AbsolutePosition + 1
    End Sub
    Public Sub Update
        WScript.Echo "Update"
    End Sub
    Public Sub Requery(consulta)
        WScript.Echo "Requery " & consulta
        AbsolutePosition = 1
    End Sub
    Public Function GetConnection
        GetConnection = "conexion"
    End Function
    Public Sub Denegar_todos(conexion)
        WScript.Echo "Denegar_todos " & conexion & ": " & Marcadas
        Marcadas = ""
    End Sub
    Public Sub AplyFilter(filtro)
    End Sub
End Class

Class Pantalla
    Public Text
    Public Datos
    Public Sub AceptarSeleccionParam(indice, ctl, uno, dos, tres)
        WScript.Echo "AceptarSeleccionParam " & indice & ", " & uno & ", " & dos & ", " & tres & ": " & Datos.Marcadas
        ctl.Text = dos
    End Sub
    Public Sub clsEvents_AceptaSeleccion(indice, ctl, uno, dos, tres)
        WScript.Echo "clsEvents_AceptaSeleccion " & indice & ", " & ctl.Text & ", " & uno
    End Sub
End Class

Dim lista, campoFase
Set lista = New Fases
lista.Codigos = "F-1 F-2 F-3"
lista.Marcadas = "F-2"
lista.AbsolutePosition = 1
Set campoFase = New Pantalla
Set campoFase.Datos = lista
CreateObject("Tamvelo.ClsShowSerch").ShowSelecTrueFalse campoFase, lista, campoFase
WScript.Echo "En el campo: " & campoFase.Text
